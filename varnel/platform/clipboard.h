// The clipboard of the process: the picture that was copied last, for the process itself and, where
// there is a display server, for other programs.
//
// On a display the process owns the CLIPBOARD selection until another program copies something, and
// gives the picture out as image/png and image/bmp. It does so while the host's loop calls Pump();
// with the process the picture is gone. No thread is started. Each operation may be called on any
// thread.
#pragma once

#include <memory>
#include <mutex>
#include <vector>

#include "varnel/foundation/export.h"
#include "varnel/foundation/types.h"
#include "varnel/platform/pixels.h"

namespace varnel {

namespace detail {
class ClipboardOwner;
}

class VARNEL_API Clipboard {
 public:
    static Clipboard& Get();

    Clipboard(const Clipboard&) = delete;
    Clipboard& operator=(const Clipboard&) = delete;

    /// Keeps `dib`, a packed device-independent bitmap, as the content of the process's own
    /// clipboard, and offers `picture` to other programs of the display server of that name (as in
    /// DISPLAY); null means that there is none. False when there should be an offer and the server
    /// did not take it.
    bool SetPicture(const Bitmap& picture, std::vector<BYTE> dib, const char* display);

    /// The packed bitmap that was copied last: header, 256 colours, pixels bottom-up. Empty when
    /// there is none. What other programs copy does not change it.
    std::vector<BYTE> GetDIB() const;

    /// Forgets the picture and ends the offer.
    void Clear();

    /// Whether other programs can paste the picture.
    bool IsOffered() const;

    /// Becomes readable when Pump has something to do; -1 without an offer. It changes with
    /// SetPicture.
    int ConnectionFd() const;

    /// Answers the programs that want to paste. Call it once after copying and whenever
    /// ConnectionFd() is readable, or often.
    /// False when nothing is offered any more: another program has copied something or the server
    /// is gone, and all that had begun to paste have finished.
    bool Pump();

    /// For programs without a loop: answers until nothing is offered any more (true), or until
    /// `milliseconds` have passed (false; negative: waits forever).
    bool ServeUntilTakenOver(int milliseconds = -1);

 private:
    Clipboard();
    ~Clipboard();

    mutable std::mutex m_Mutex;
    std::vector<BYTE> m_DIB;
    std::shared_ptr<detail::ClipboardOwner> m_Owner;
};

}  // namespace varnel
