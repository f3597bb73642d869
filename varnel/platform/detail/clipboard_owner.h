// Owns the CLIPBOARD selection of a display server and gives out what was copied in several forms,
// large ones piece by piece.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "varnel/foundation/types.h"

namespace varnel::detail {

/// One form of what was copied.
struct ClipboardForm {
    std::string type;  ///< a MIME type
    std::vector<BYTE> bytes;
};

class ClipboardOwner {
 public:
    /// Null when there is no such server or it does not make us the owner.
    static std::shared_ptr<ClipboardOwner> Make(const std::string& display,
                                                std::vector<ClipboardForm> forms);
    virtual ~ClipboardOwner() = default;

    virtual int Fd() const = 0;

    /// Answers what other programs have asked for. False once another one owns the selection, or
    /// the server is gone, and all that was begun is given out.
    virtual bool Pump() = 0;

    /// Waits until there may be something to answer, at most `milliseconds`; negative: forever.
    virtual void Wait(int milliseconds) = 0;
};

}  // namespace varnel::detail
