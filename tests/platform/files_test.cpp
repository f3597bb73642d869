#include "varnel/platform/files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <thread>

#include "tests/support/files.h"
#include "varnel/platform/file_handles.h"

namespace varnel {
namespace {

namespace fs = std::filesystem;
using test::ReadAll;
using test::WriteAll;

class Files : public testing::Test {
 protected:
    std::string Path(const std::string& name) const { return m_Folder.File(name); }
    std::size_t FilesInFolder() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(m_Folder.Path()), fs::directory_iterator()));
    }

    test::TemporaryFolder m_Folder;
};

bool Save(const std::string& path, const std::string& text) {
    const std::unique_ptr<File> file = OpenOutputFile(path);
    if (!file) return false;
    file->Write(text.data(), text.size());
    file->Commit();
    return true;
}

mode_t ModeOf(const std::string& path) {
    struct stat status {};
    ::stat(path.c_str(), &status);
    return status.st_mode & 07777;
}

TEST_F(Files, WritesAndReadsBackAcrossItsBuffers) {
    std::string text;
    for (int i = 0; i < 50000; ++i)
        text += std::to_string(i) + ',';
    {
        const auto file = OpenOutputFile(Path("a"));
        ASSERT_TRUE(file);
        std::size_t at = 0;
        for (std::size_t size : {std::size_t{1}, std::size_t{70000}, std::size_t{65535}}) {
            file->Write(text.data() + at, size);
            at += size;
        }
        file->Write(text.data() + at, text.size() - at);
        EXPECT_FALSE(fs::exists(Path("a"))) << "nothing is there before Commit";
        file->Commit();
        file->Commit();
        EXPECT_THROW(file->Write("x", 1), FileException);
    }
    EXPECT_EQ(ReadAll(Path("a")), text);

    const auto file = OpenInputFile(Path("a"));
    ASSERT_TRUE(file);
    EXPECT_EQ(file->Remaining(), text.size());
    std::string back(text.size(), '\0');
    std::size_t at = 0;
    for (std::size_t size :
         {std::size_t{3}, std::size_t{65534}, std::size_t{66000}, std::size_t{9}}) {
        EXPECT_EQ(file->Read(back.data() + at, size), size);
        at += size;
        EXPECT_EQ(file->Remaining(), text.size() - at);
    }
    EXPECT_FALSE(file->RanDry());
    EXPECT_EQ(file->Read(back.data() + at, text.size()), text.size() - at);
    EXPECT_TRUE(file->RanDry());
    EXPECT_EQ(file->Remaining(), 0u);
    EXPECT_EQ(back, text);
    EXPECT_THROW(file->Write("x", 1), FileException);
}

TEST_F(Files, WithoutCommitTheOldFileStaysAlone) {
    WriteAll(Path("a"), "old");
    { OpenOutputFile(Path("a"))->Write("new", 3); }
    EXPECT_EQ(ReadAll(Path("a")), "old");
    { OpenOutputFile(Path("b"))->Write("new", 3); }
    EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(Files, ReplacingKeepsPermissionsAndFollowsLinks) {
    WriteAll(Path("a"), "old, and longer");
    ASSERT_EQ(::chmod(Path("a").c_str(), 0640), 0);
    fs::create_symlink("a", Path("link"));
    fs::create_symlink(Path("link"), Path("link2"));
    ASSERT_TRUE(Save(Path("link2"), "new"));
    EXPECT_TRUE(fs::is_symlink(Path("link")));
    EXPECT_EQ(ReadAll(Path("a")), "new");
    EXPECT_EQ(ModeOf(Path("a")), 0640u);

    fs::create_symlink("b", Path("dangling"));
    const mode_t before = ::umask(027);
    EXPECT_TRUE(Save(Path("dangling"), "b"));
    ::umask(before);
    EXPECT_EQ(ReadAll(Path("b")), "b");
    EXPECT_EQ(ModeOf(Path("b")), 0640u) << "a new file has what the umask leaves";
}

/// Why a name cannot be opened; "opened" when it can.
template <class Open>
std::string WhyNot(Open open, const std::string& name) {
    CString why = "opened";
    const bool opened = open(name, &why) != nullptr;
    EXPECT_EQ(opened, why == "opened");
    return why;
}

TEST_F(Files, WhatCannotBeOpenedSaysWhy) {
    WriteAll(Path("a"), "old");
    fs::create_symlink("circle", Path("circle"));
    ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
    const std::string folder = m_Folder.Path();
    const std::string nul = Path("a") + std::string("\0b", 2);
    const std::string longName = Path(std::string(300, 'x'));
    const struct {
        std::unique_ptr<File> (*open)(const CString&, CString*);
        std::string name;
        std::string why;
    } cases[] = {
        {OpenInputFile, Path("b"), Path("b") + ": No such file or directory"},
        {OpenInputFile, folder, folder + ": Is a directory"},
        {OpenInputFile, "", "\"\": No such file or directory"},
        {OpenInputFile, nul, Path("a") + ": Invalid argument"},
        {OpenRegularFile, Path("pipe"), Path("pipe") + ": It is no regular file"},
        {OpenRegularFile, "/dev/zero", "/dev/zero: It is no regular file"},
        {OpenRegularFile, Path("a"), "opened"},
        {OpenOutputFile, nul, Path("a") + ": Invalid argument"},
        {OpenOutputFile, "", "\"\": No such file or directory"},
        {OpenOutputFile, folder, folder + ": Is a directory"},
        {OpenOutputFile, Path("new/"), Path("new/") + ": Is a directory"},
        {OpenOutputFile, Path("missing/a"), Path("missing/a") + ": No such file or directory"},
        {OpenOutputFile, Path("a/b"), Path("a/b") + ": Not a directory"},
        {OpenOutputFile, longName, longName + ": File name too long"},
        {OpenOutputFile, Path("circle"), Path("circle") + ": Too many levels of symbolic links"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(WhyNot(c.open, c.name), c.why);
    EXPECT_EQ(FilesInFolder(), 3u);
}

TEST_F(Files, PicturesOfChartsLieBesideThem) {
    EXPECT_EQ(PictureBeside("p/a.bmp", "/charts/x.chart"), "/charts/p/a.bmp");
    EXPECT_EQ(PictureBeside("/p/a.bmp", "/charts/x.chart"), "/p/a.bmp");
    EXPECT_EQ(PictureBeside("a.bmp", "x.chart"), "a.bmp");
    for (const char* outside : {"..", "../a.bmp", "p/../../a.bmp", "p/.."})
        EXPECT_EQ(PictureBeside(outside, "/charts/x.chart"), "") << outside;
    WriteAll(Path("mapped"), "old");
    SetPictureFileHook([this](const CString& picture, const CString& chart) {
        return picture == "a.bmp" && chart == "x.chart" ? Path("mapped") : CString();
    });
    CString why;
    EXPECT_TRUE(OpenPictureFile("a.bmp", "x.chart"));
    EXPECT_FALSE(OpenPictureFile("b.bmp", "x.chart", &why));
    SetPictureFileHook(nullptr);
    EXPECT_EQ(why, "b.bmp: Permission denied");
}

/// Runs `body` as a user who is not root; false when it fails there or there is no other user.
template <class Body>
bool AsNobody(Body body) {
    if (::geteuid() != 0) return body();
    const pid_t child = ::fork();
    if (child == 0) ::_exit(::setgid(65534) == 0 && ::setuid(65534) == 0 && body() ? 0 : 1);
    int status = 1;
    return ::waitpid(child, &status, 0) == child && status == 0;
}

TEST_F(Files, NothingIsWrittenWhereAFileCannotBeReplaced) {
    WriteAll(Path("a"), "old");
    WriteAll(Path("b"), "old");
    ASSERT_EQ(::chmod(Path("a").c_str(), 0666), 0);
    ASSERT_EQ(::chmod(Path("b").c_str(), 0444), 0);
    ASSERT_EQ(::chmod(m_Folder.Path().c_str(), 0555), 0);
    EXPECT_TRUE(AsNobody([this] {
        return WhyNot(OpenOutputFile, Path("a")) ==
                   Path("a") + ": no file can be made beside it: Permission denied" &&
               WhyNot(OpenOutputFile, Path("b")) == Path("b") + ": Permission denied" &&
               WhyNot(OpenOutputFile, Path("c")) == Path("c") + ": Permission denied";
    }));
    EXPECT_TRUE(AsNobody([this] {
        SetSaveMode(SaveMode::Direct);
        const bool saved = Save(Path("a"), "on request");
        SetSaveMode(SaveMode::Replace);
        return saved;
    }));
    EXPECT_EQ(ReadAll(Path("a")), "on request");
    if (::geteuid() != 0) return;
    ASSERT_EQ(::chmod(m_Folder.Path().c_str(), 0777), 0);
    EXPECT_TRUE(AsNobody([this] {
        return WhyNot(OpenOutputFile, Path("a")) ==
               Path("a") + ": its owner cannot be kept: Operation not permitted";
    })) << "it belongs to root";
    EXPECT_EQ(FilesInFolder(), 2u);
}

TEST_F(Files, AFullDeviceIsAFailingCommit) {
    const auto file = OpenOutputFile("/dev/full");
    ASSERT_TRUE(file);
    file->Write("few", 3);
    for (int again = 0; again < 2; ++again) {
        try {
            file->Commit();
            ADD_FAILURE() << "a failure is not forgotten";
        } catch (const FileException& failure) {
            EXPECT_STREQ(failure.what(), "/dev/full: No space left on device");
        }
    }
    EXPECT_TRUE(Save("/dev/null", "much"));
}

TEST_F(Files, ALimitOnSizesKeepsTheOldFileAndTheProcess) {
    WriteAll(Path("a"), std::string(150, 'o'));
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const rlimit limit{100, before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    for (const SaveMode mode : {SaveMode::Replace, SaveMode::Direct}) {
        SetSaveMode(mode);
        for (const std::size_t size : {std::size_t{1000}, std::size_t{200000}})
            EXPECT_THROW(Save(Path("a"), std::string(size, 'x')), FileException);
    }
    SetSaveMode(SaveMode::Replace);
    ::setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(ReadAll(Path("a")), std::string(150, 'o'));
    EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(Files, DirectSavingKeepsTheFileItself) {
    SetSaveMode(SaveMode::Direct);
    WriteAll(Path("a"), "old, and longer");
    fs::create_hard_link(Path("a"), Path("b"));
    EXPECT_TRUE(Save(Path("a"), "new"));
    EXPECT_TRUE(Save(Path("c"), "new"));
    { OpenOutputFile(Path("a"))->Write("without commit", 14); }
    SetSaveMode(SaveMode::Replace);
    EXPECT_EQ(ReadAll(Path("b")), "new");
    EXPECT_EQ(ReadAll(Path("c")), "new");
}

TEST_F(Files, TheNextSaveRemovesWhatDeadWritersLeft) {
    const auto alive = OpenOutputFile(Path("b"));
    WriteAll(Path(".varnel-0123456789abcdef"), "abandoned");
    WriteAll(Path(".varnel-0123456789ABCDEF"), "somebody else's");
    EXPECT_TRUE(Save(Path("a"), "new"));
    EXPECT_EQ(FilesInFolder(), 3u) << "a, what is somebody else's, and the one being written";
    alive->Commit();
    EXPECT_TRUE(fs::exists(Path("b")));
}

TEST_F(Files, PipesAreWrittenDirectlyAndReadToTheirEnd) {
    ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0600), 0);
    const std::string text(300000, 'p');
    std::thread writer([&] { EXPECT_TRUE(Save(Path("pipe"), text)); });
    const auto file = OpenInputFile(Path("pipe"));
    writer.join();
    ASSERT_TRUE(file);
    EXPECT_EQ(file->Remaining(), text.size());

    // A reader that goes away is a failing write and no signal.
    const int reader = ::open(Path("pipe").c_str(), O_RDONLY | O_NONBLOCK);
    const auto broken = OpenOutputFile(Path("pipe"));
    ASSERT_TRUE(broken);
    ::close(reader);
    broken->Write("x", 1);
    EXPECT_THROW(broken->Commit(), FileException);
}

TEST_F(Files, FilesMadeUpByTheKernelAreNotEmpty) {
    const auto file = OpenInputFile("/proc/self/status");
    ASSERT_TRUE(file);
    EXPECT_GT(file->Remaining(), 100u);
}

TEST_F(Files, HandlesSaveAndLoadOneObject) {
    const auto create = [this](DWORD access, DWORD disposition) {
        return CreateFileA(Path("a").c_str(), access, 0, nullptr, disposition,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
    };
    EXPECT_EQ(create(GENERIC_READ, OPEN_EXISTING), INVALID_HANDLE_VALUE);
    DWORD count = 0;
    for (const DWORD disposition : {CREATE_NEW, CREATE_ALWAYS}) {
        const HANDLE file = create(GENERIC_WRITE, disposition);
        EXPECT_TRUE(WriteFile(file, "abc", 3, &count, nullptr));
        EXPECT_EQ(count, 3u);
        EXPECT_TRUE(CloseHandle(file));
    }
    EXPECT_EQ(create(GENERIC_WRITE, CREATE_NEW), INVALID_HANDLE_VALUE);
    const HANDLE file = create(GENERIC_READ, OPEN_EXISTING);
    char bytes[4] = {};
    EXPECT_TRUE(ReadFile(file, bytes, 4, &count, nullptr));
    EXPECT_EQ(count, 3u);
    EXPECT_STREQ(bytes, "abc");
    EXPECT_FALSE(WriteFile(file, "x", 1, &count, nullptr));
    EXPECT_EQ(count, 0u);
    EXPECT_TRUE(CloseHandle(file));
    EXPECT_FALSE(CloseHandle(INVALID_HANDLE_VALUE));
}

TEST(MemoryFile, IsWrittenAtItsEndAndReadFromItsStart) {
    MemoryFile file({'a', 'b'});
    file.Write("cd", 2);
    char read[4] = {};
    EXPECT_EQ(file.Read(read, 3), 3u);
    EXPECT_EQ(std::string(read), "abc");
    file.Write("e", 1);
    EXPECT_EQ(file.Remaining(), 2u);
    EXPECT_EQ(file.Read(read, 4), 2u);
    EXPECT_TRUE(file.RanDry());
    EXPECT_EQ(file.GetBytes().size(), 5u);
}

}  // namespace
}  // namespace varnel
