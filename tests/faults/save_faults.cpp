// Saves views while processes are killed and disks are full, and looks at what is left: the old
// file or the new one, whole, and nothing beside it.
//
//     varnel_save_faults FOLDER [SMALL_DISK QUOTA_DISK READ_ONLY_DISK]
//
// FOLDER is an empty folder; SMALL_DISK is one on a disk of about 1 MB, QUOTA_DISK one with a quota
// of 1 MB, and READ_ONLY_DISK one that holds a file old.chart; "" where there is none. Prints one
// line a kind: kind, number tried, number that went wrong.
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <iostream>
#include <random>
#include <string>

#include "tests/support/files.h"
#include "varnel/varnel.h"

namespace {

namespace fs = std::filesystem;
using namespace varnel;
using test::ReadAll;
using test::WriteAll;

constexpr int kKills = 200;
constexpr uid_t kNobody = 65534;

std::size_t FilesIn(const fs::path& folder) {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

std::vector<point3Dtype> Points(int n) {
    std::vector<point3Dtype> points;
    for (int i = 0; i < n; ++i)
        for (int k = 0; k < n; ++k)
            points.push_back({i + 0.25 * k, k * 1.0, i * k * 0.001, 0});
    return points;
}

/// A surface over n x n points, and the bytes that saving it gives.
struct Sample {
    Sample(int n, const fs::path& scratch) : surface(Points(n).data(), n, n, 0) {
        surface.Save(scratch.string());
        bytes = ReadAll(scratch);
        fs::remove(scratch);
    }

    bool SaveTo(const fs::path& path) {
        try {
            surface.Save(path.string());
            return true;
        } catch (const std::exception&) {
            return false;
        }
    }

    CPolysurface surface;
    std::string bytes;
};

class Report {
 public:
    void Line(const std::string& kind, int tried, int wrong) {
        std::printf("%-44s %6d %6d\n", kind.c_str(), tried, wrong);
        m_Wrong += wrong;
    }
    void Skip(const std::string& kind) { std::printf("%-44s not possible here\n", kind.c_str()); }
    int Wrong() const { return m_Wrong; }

 private:
    int m_Wrong = 0;
};

/// Runs `body` in a child process, as nobody if asked, and returns its exit status; -1 when it was
/// killed, by us after `microseconds` (negative: never) or by anything else.
int InChild(bool asNobody, int microseconds, const std::function<int()>& body) {
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child == 0) {
        if (asNobody && (::setgid(kNobody) != 0 || ::setuid(kNobody) != 0)) ::_exit(99);
        ::_exit(body());
    }
    if (microseconds >= 0) {
        ::usleep(static_cast<useconds_t>(microseconds));
        ::kill(child, SIGKILL);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// Kills writers of `path` at random moments of their saves; each time the file must be one of the
/// two samples, and the save after the last one must leave `files` files in the folder.
int KillWriters(const fs::path& path, bool asNobody, Sample& small, Sample& large,
                std::size_t files) {
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < 5; ++i)
        large.SaveTo(path.parent_path() / "timing");
    const double save =
        std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start)
            .count() /
        5;
    fs::remove(path.parent_path() / "timing");

    std::mt19937 random(1);
    int wrong = 0;
    for (int i = 0; i < kKills; ++i) {
        const int moment =
            static_cast<int>(static_cast<double>(random()) / 4294967296.0 * 4 * save);
        InChild(asNobody, moment, [&] {
            for (;;) {
                large.SaveTo(path);
                small.SaveTo(path);
            }
            return 0;
        });
        const std::string left = ReadAll(path);
        if (left != small.bytes && left != large.bytes) ++wrong;
    }
    InChild(asNobody, -1, [&] { return small.SaveTo(path) ? 0 : 1; });
    if (FilesIn(path.parent_path()) != files) ++wrong;
    return wrong;
}

void Kills(Report& report, const fs::path& folder, Sample& small, Sample& large) {
    const fs::path own = folder / "kill";
    fs::create_directory(own);
    WriteAll(own / "a", small.bytes);
    report.Line("kill: ordinary folder", kKills, KillWriters(own / "a", false, small, large, 1));
    if (::geteuid() != 0) {
        report.Skip("kill: other owner, folder not writable");
        return;
    }
    ::chmod(own.c_str(), 0777);
    ::chmod((own / "a").c_str(), 0666);
    report.Line("kill: file of another owner", kKills,
                KillWriters(own / "a", true, small, large, 1));
    ::chmod(own.c_str(), 0755);
    report.Line("kill: folder not writable", kKills, KillWriters(own / "a", true, small, large, 1));
}

/// Saves `large` over `old` where it cannot succeed; 1 when anything but a failure that leaves the
/// old file alone came of it.
int FailsWhole(
    const fs::path& path, const std::string& old, Sample& large, bool asNobody,
    const std::function<void()>& prepare = [] {}) {
    const std::size_t files = FilesIn(path.parent_path());
    const int status = InChild(asNobody, -1, [&] {
        prepare();
        return large.SaveTo(path) ? 0 : 7;
    });
    return status == 7 && ReadAll(path) == old && FilesIn(path.parent_path()) == files ? 0 : 1;
}

/// Each limit on the size of files from nothing to all but one byte, in both ways of saving.
void Limits(Report& report, const fs::path& folder, Sample& small, Sample& large) {
    const fs::path path = folder / "limits" / "a";
    fs::create_directory(path.parent_path());
    WriteAll(path, small.bytes);
    for (const SaveMode mode : {SaveMode::Replace, SaveMode::Direct}) {
        int tried = 0;
        int wrong = 0;
        for (std::size_t limit = 0; limit < large.bytes.size();
             limit += large.bytes.size() / 20 + 1, ++tried)
            wrong += FailsWhole(path, small.bytes, large, false, [&] {
                SetSaveMode(mode);
                const rlimit size{limit, limit};
                ::setrlimit(RLIMIT_FSIZE, &size);
            });
        report.Line(mode == SaveMode::Replace ? "file size limit" : "file size limit, direct",
                    tried, wrong);
    }
}

/// Files that are a little and much too large for what is left of a small disk.
void FullDisk(Report& report, const std::string& kind, const fs::path& disk,
              const fs::path& scratch, Sample& small) {
    if (disk.empty()) return report.Skip(kind);
    const fs::path path = disk / "a";
    for (const SaveMode mode : {SaveMode::Replace, SaveMode::Direct}) {
        int tried = 0;
        int wrong = 0;
        for (int n = 180; n < 280; n += 10, ++tried) {
            Sample large(n, scratch);
            WriteAll(path, small.bytes);
            wrong += FailsWhole(path, small.bytes, large, false, [mode] { SetSaveMode(mode); });
        }
        report.Line(mode == SaveMode::Replace ? kind : kind + ", direct", tried, wrong);
    }
}

void ReadOnly(Report& report, const fs::path& folder, const fs::path& disk, Sample& small,
              Sample& large) {
    const fs::path path = folder / "readonly" / "a";
    fs::create_directory(path.parent_path());
    WriteAll(path, small.bytes);
    ::chmod(path.c_str(), 0444);
    ::chmod(path.parent_path().c_str(), 0777);
    report.Line("file read-only", 1, FailsWhole(path, small.bytes, large, ::geteuid() == 0));
    if (disk.empty()) return report.Skip("disk read-only");
    const fs::path old = disk / "old.chart";
    report.Line("disk read-only", 1, FailsWhole(old, ReadAll(old), large, false));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2 && argc != 5) {
        std::cerr << "usage: varnel_save_faults FOLDER [SMALL_DISK QUOTA_DISK READ_ONLY_DISK]\n";
        return 2;
    }
    CErr3D::SetErrorReportMode(0);
    const fs::path folder = argv[1];
    const fs::path scratch = folder / "scratch";
    ::chmod(folder.c_str(), 0755);
    Sample small(60, scratch);
    Sample large(150, scratch);
    Report report;
    std::printf("%-44s %6s %6s\n", "kind", "tried", "wrong");
    Kills(report, folder, small, large);
    Limits(report, folder, small, large);
    const auto disk = [&](int i) { return argc > i ? fs::path(argv[i]) : fs::path(); };
    FullDisk(report, "disk full", disk(2), scratch, small);
    FullDisk(report, "quota", disk(3), scratch, small);
    ReadOnly(report, folder, disk(4), small, large);
    return report.Wrong() == 0 ? 0 : 1;
}
