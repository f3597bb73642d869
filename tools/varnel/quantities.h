// Sizes, times and amounts of memory as they stand on a command line.
#pragma once

#include <cstdint>
#include <string>

#include "tools/varnel/commands.h"

namespace tool {

// Each returns what is wrong with the text, empty when nothing is; an empty text changes nothing.

/// WIDTHxHEIGHT in pixels, 1..16384 each, or with mm, cm, in or pt behind the last or both: on
/// paper, and 96 pixels to the inch.
std::string ParseSize(const std::string& text, PictureSize& size);
/// A positive number of seconds.
std::string ParseSeconds(const std::string& text, double& seconds);
/// A positive number of bytes, with K, M or G for powers of 1024.
std::string ParseBytes(const std::string& text, std::uint64_t& bytes);

}  // namespace tool
