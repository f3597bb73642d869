#include "varnel/foundation/notice.h"

#include <iostream>
#include <mutex>
#include <utility>

namespace varnel {
namespace {

struct Channel {
    std::mutex mutex;
    NoticeHandler handler;
};

/// Never destroyed: static views of the host may tell something at the end of the process.
Channel& channel() {
    static auto* const instance = new Channel;
    return *instance;
}

}  // namespace

NoticeHandler SetNoticeHandler(NoticeHandler handler) {
    const std::lock_guard lock(channel().mutex);
    return std::exchange(channel().handler, std::move(handler));
}

void ShowNotice(const std::string& text) {
    NoticeHandler handler;
    {
        // A copy, so that a handler that blocks or installs another one holds no lock.
        const std::lock_guard lock(channel().mutex);
        handler = channel().handler;
    }
    if (handler)
        handler(text);
    else
        std::cerr << text << '\n';
}

}  // namespace varnel
