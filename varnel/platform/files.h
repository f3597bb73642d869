// Files on disk and in memory for everything that saves or loads.
//
// A regular file is written through a temporary file beside it, which takes its place (and its
// permissions) when the writer commits; until then the old file stays as it was. What cannot be
// replaced that way (a device, a pipe, a file in a folder that cannot be written) is written
// directly. An input that is no regular file is read to its end when it is opened, so that its
// length is known.
#pragma once

#include <memory>

#include "varnel/foundation/export.h"
#include "varnel/foundation/memory_file.h"
#include "varnel/foundation/types.h"

namespace varnel {

/// Opens an existing file for reading; null when that is not possible (missing, a folder, no
/// permission, a device or pipe that gives more than 256 MiB).
VARNEL_API std::unique_ptr<File> OpenInputFile(const CString& name);

/// Creates a file, or prepares to replace the one that is there; null when that is not possible
/// (missing folder, no permission, a read-only target). Nothing is final before File::Commit.
/// Symbolic links are followed. A replaced file keeps its owner and permissions; one whose owner
/// cannot be kept is written directly.
VARNEL_API std::unique_ptr<File> OpenOutputFile(const CString& name);

}  // namespace varnel
