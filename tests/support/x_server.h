// A display server of the test's own, without a screen, and another program's look at it.
//
// What a test sees here goes over a connection that the library knows nothing of. Where Xvfb is not
// installed, START_X_SERVER skips the test and says so.
#pragma once

#include <sys/types.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/support/files.h"
#include "varnel/platform/pixels.h"

namespace varnel::test {

class XServer {
 public:
    /// Starts a server with a screen of 640 x 480 and the given depth. Null when there is no Xvfb.
    static std::unique_ptr<XServer> Start(int depth = 24,
                                          const std::vector<std::string>& options = {});
    ~XServer();
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

    const std::string& Name() const { return m_Name; }  ///< as in DISPLAY

    /// Ends the server as a crash would.
    void Kill();

    // As another program on the same server.
    unsigned long NewWindow(int width, int height, int depth);
    void DestroyWindow(unsigned long window);
    void ResizeWindow(unsigned long window, int width, int height);
    void MovePointer(unsigned long window, int x, int y);
    void AskToClose(unsigned long window);
    int CountWindows();
    /// What the window shows, as 32-bit pixels. Null when it is gone.
    std::unique_ptr<Bitmap> Photograph(unsigned long window);
    /// Makes a request that fails, with the host's own handlers in place; how often its error
    /// handler was called.
    int HostErrors();

 private:
    XServer(pid_t process, std::string name);
    void End(int signal);

    struct Host;
    pid_t m_Process;
    std::string m_Name;
    std::unique_ptr<Host> m_Host;
};

/// Whether a program can be found in PATH.
bool HasProgram(const std::string& name);

/// Runs a shell command and returns what it writes; `status` gets its exit status, 124 after
/// `seconds`.
std::string RunCommand(const std::string& command, int* status = nullptr, int seconds = 30);

/// The largest difference of a colour component, 255 when the sizes differ.
int LargestDifference(const Bitmap& a, const Bitmap& b);

}  // namespace varnel::test

#define SKIP_WITHOUT(program)               \
    if (!varnel::test::HasProgram(program)) \
    GTEST_SKIP() << "SKIPPED, NOT TESTED: the program " << (program) << " is not installed"

#define START_X_SERVER(server, ...)                                \
    SKIP_WITHOUT("Xvfb");                                          \
    const auto server = varnel::test::XServer::Start(__VA_ARGS__); \
    ASSERT_NE((server), nullptr) << "Xvfb does not start"
