#include "tests/support/x_server.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace varnel::test {
namespace {

constexpr int kWidth = 640;
constexpr int kHeight = 480;

int hostErrors = 0;
int CountHostError(Display* /*display*/, XErrorEvent* /*event*/) {
    return ++hostErrors;
}

/// Reads the display number that the server writes when it is ready.
std::string ReadNumber(int fd) {
    std::string number;
    char c = 0;
    while (read(fd, &c, 1) == 1 && c != '\n')
        number += c;
    return number;
}

BYTE Component(unsigned long pixel, unsigned long mask) {
    const int shift = std::countr_zero(mask);
    const unsigned long most = mask >> shift;
    return static_cast<BYTE>(((pixel & mask) >> shift) * 255 / most +
                             (((pixel & mask) >> shift) * 255 % most * 2 >= most ? 1 : 0));
}

}  // namespace

struct XServer::Host {
    Display* display = nullptr;
    ~Host() {
        if (display != nullptr) XCloseDisplay(display);
    }
};

std::unique_ptr<XServer> XServer::Start(int depth, const std::vector<std::string>& options) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return nullptr;
    std::ostringstream screen;
    screen << kWidth << 'x' << kHeight << 'x' << depth;
    std::vector<std::string> arguments = {"Xvfb", "-displayfd", "3", "-noreset",  "-nolisten",
                                          "tcp",  "-screen",    "0", screen.str()};
    arguments.insert(arguments.end(), options.begin(), options.end());
    std::vector<char*> argv;
    for (std::string& argument : arguments)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    const pid_t process = fork();
    if (process == 0) {
        // A test that crashes takes its server with it.
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        const int nothing = open("/dev/null", O_RDWR);
        dup2(nothing, STDOUT_FILENO);
        dup2(nothing, STDERR_FILENO);
        // One by one: the pipe's end may be the very number, which would stay closed on exec.
        const int end = fcntl(ends[1], F_DUPFD, 10);
        dup2(end, 3);
        execvp(argv[0], argv.data());
        _exit(127);
    }
    close(ends[1]);
    const std::string number = ReadNumber(ends[0]);
    close(ends[0]);
    std::unique_ptr<XServer> server(new XServer(process, ":" + number));
    server->m_Host = std::make_unique<Host>();
    if (!number.empty()) server->m_Host->display = XOpenDisplay(server->m_Name.c_str());
    return server->m_Host->display != nullptr ? std::move(server) : nullptr;
}

XServer::XServer(pid_t process, std::string name) : m_Process(process), m_Name(std::move(name)) {
}

XServer::~XServer() {
    m_Host.reset();
    End(SIGTERM);
}

void XServer::End(int signal) {
    if (m_Process <= 0) return;
    kill(m_Process, signal);
    waitpid(m_Process, nullptr, 0);
    m_Process = 0;
}

void XServer::Kill() {
    // The connection of this side ends before its server, for nothing here survives losing it.
    m_Host.reset();
    const pid_t process = m_Process;
    End(SIGKILL);
    // A server that is killed leaves its lock and its socket behind.
    const std::string lock = "/tmp/.X" + m_Name.substr(1) + "-lock";
    pid_t owner = 0;
    std::ifstream(lock) >> owner;
    if (owner != process) return;
    std::error_code ignored;
    std::filesystem::remove("/tmp/.X11-unix/X" + m_Name.substr(1), ignored);
    std::filesystem::remove(lock, ignored);
}

unsigned long XServer::NewWindow(int width, int height, int depth) {
    Display* d = m_Host->display;
    XVisualInfo visual{};
    if (XMatchVisualInfo(d, DefaultScreen(d), depth, TrueColor, &visual) == 0) return 0;
    XSetWindowAttributes a{};
    a.colormap = XCreateColormap(d, DefaultRootWindow(d), visual.visual, AllocNone);
    a.border_pixel = 0;
    a.background_pixel = 0x123456;
    const Window window = XCreateWindow(
        d, DefaultRootWindow(d), 0, 0, static_cast<unsigned>(width), static_cast<unsigned>(height),
        0, visual.depth, InputOutput, visual.visual, CWColormap | CWBorderPixel | CWBackPixel, &a);
    XMapWindow(d, window);
    XSync(d, False);
    return window;
}

void XServer::DestroyWindow(unsigned long window) {
    XDestroyWindow(m_Host->display, window);
    XSync(m_Host->display, False);
}

void XServer::ResizeWindow(unsigned long window, int width, int height) {
    XResizeWindow(m_Host->display, window, static_cast<unsigned>(width),
                  static_cast<unsigned>(height));
    XSync(m_Host->display, False);
}

void XServer::MovePointer(unsigned long window, int x, int y) {
    XWarpPointer(m_Host->display, None, window, 0, 0, 0, 0, x, y);
    XSync(m_Host->display, False);
}

void XServer::AskToClose(unsigned long window) {
    Display* d = m_Host->display;
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(d, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(d, "WM_DELETE_WINDOW", False));
    XSendEvent(d, window, False, NoEventMask, &event);
    XSync(d, False);
}

int XServer::CountWindows() {
    Window root = 0;
    Window parent = 0;
    Window* windows = nullptr;
    unsigned count = 0;
    XQueryTree(m_Host->display, DefaultRootWindow(m_Host->display), &root, &parent, &windows,
               &count);
    if (windows != nullptr) XFree(windows);
    return static_cast<int>(count);
}

std::unique_ptr<Bitmap> XServer::Photograph(unsigned long window) {
    Display* d = m_Host->display;
    XWindowAttributes a{};
    if (XGetWindowAttributes(d, window, &a) == 0) return nullptr;
    XImage* image = XGetImage(d, window, 0, 0, static_cast<unsigned>(a.width),
                              static_cast<unsigned>(a.height), AllPlanes, ZPixmap);
    if (image == nullptr) return nullptr;
    auto picture = std::make_unique<Bitmap>(a.width, a.height, 32);
    for (int y = 0; y < a.height; ++y)
        for (int x = 0; x < a.width; ++x) {
            const unsigned long pixel = XGetPixel(image, x, y);
            BYTE* out = picture->RowFromTop(y) + 4 * x;
            out[0] = Component(pixel, a.visual->blue_mask);
            out[1] = Component(pixel, a.visual->green_mask);
            out[2] = Component(pixel, a.visual->red_mask);
            out[3] = 255;
        }
    XDestroyImage(image);
    return picture;
}

int XServer::HostErrors() {
    hostErrors = 0;
    const XErrorHandler before = XSetErrorHandler(CountHostError);
    XDestroyWindow(m_Host->display, 0x7FFFFFF);
    XSync(m_Host->display, False);
    XSetErrorHandler(before);
    return hostErrors;
}

bool HasProgram(const std::string& name) {
    const char* path = std::getenv("PATH");
    std::istringstream folders(path != nullptr ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');)
        if (access((folder + "/" + name).c_str(), X_OK) == 0) return true;
    return false;
}

std::string RunCommand(const std::string& command, int* status, int seconds) {
    const std::string bounded =
        "exec timeout " + std::to_string(seconds) + " sh -c '" + command + "'";
    FILE* pipe = popen(bounded.c_str(), "r");
    if (pipe == nullptr) return {};
    std::string text;
    char buffer[4096];
    for (std::size_t n; (n = fread(buffer, 1, sizeof buffer, pipe)) > 0;)
        text.append(buffer, n);
    const int ended = pclose(pipe);
    if (status != nullptr) *status = WIFEXITED(ended) ? WEXITSTATUS(ended) : -1;
    return text;
}

int LargestDifference(const Bitmap& a, const Bitmap& b) {
    if (a.Width() != b.Width() || a.Height() != b.Height()) return 255;
    int largest = 0;
    for (int y = 0; y < a.Height(); ++y)
        for (int x = 0; x < a.Width(); ++x) {
            const RGBQUAD p = a.PixelFromTop(x, y);
            const RGBQUAD q = b.PixelFromTop(x, y);
            largest =
                std::max({largest, std::abs(p.rgbRed - q.rgbRed), std::abs(p.rgbGreen - q.rgbGreen),
                          std::abs(p.rgbBlue - q.rgbBlue)});
        }
    return largest;
}

}  // namespace varnel::test
