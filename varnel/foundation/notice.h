// The notice channel: the one way in which the library shows a text to the user.
#pragma once

#include <functional>
#include <string>

#include "varnel/foundation/export.h"

namespace varnel {

/// Receives one notice. It may block, as a message box does; it is called on the thread that has
/// something to say.
using NoticeHandler = std::function<void(const std::string& text)>;

/// Installs how notices are shown, for the whole process, and returns the handler before it. An
/// empty handler brings back the default: one line on standard error.
VARNEL_API NoticeHandler SetNoticeHandler(NoticeHandler handler);

/// Shows a text to the user through the installed handler.
VARNEL_API void ShowNotice(const std::string& text);

}  // namespace varnel
