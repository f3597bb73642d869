#include "varnel/platform/files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <thread>

namespace varnel {
namespace {

namespace fs = std::filesystem;

class Files : public testing::Test {
 protected:
    void SetUp() override {
        std::string pattern = (fs::temp_directory_path() / "varnel-files-XXXXXX").string();
        ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
        m_Folder = pattern;
    }
    void TearDown() override {
        fs::permissions(m_Folder, fs::perms::owner_all);
        fs::remove_all(m_Folder);
    }

    std::string Path(const std::string& name) const { return (m_Folder / name).string(); }

    std::size_t FilesInFolder() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(m_Folder), fs::directory_iterator()));
    }

    fs::path m_Folder;
};

void Put(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

std::string Get(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

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
    EXPECT_EQ(Get(Path("a")), text);

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
    Put(Path("a"), "old");
    { OpenOutputFile(Path("a"))->Write("new", 3); }
    EXPECT_EQ(Get(Path("a")), "old");
    { OpenOutputFile(Path("b"))->Write("new", 3); }
    EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(Files, ReplacingKeepsPermissionsAndFollowsLinks) {
    Put(Path("a"), "old, and longer");
    ASSERT_EQ(::chmod(Path("a").c_str(), 0640), 0);
    fs::create_symlink("a", Path("link"));
    fs::create_symlink(Path("link"), Path("link2"));
    ASSERT_TRUE(Save(Path("link2"), "new"));
    EXPECT_TRUE(fs::is_symlink(Path("link")));
    EXPECT_EQ(Get(Path("a")), "new");
    EXPECT_EQ(ModeOf(Path("a")), 0640u);

    fs::create_symlink("b", Path("dangling"));
    const mode_t before = ::umask(027);
    EXPECT_TRUE(Save(Path("dangling"), "b"));
    ::umask(before);
    EXPECT_EQ(Get(Path("b")), "b");
    EXPECT_EQ(ModeOf(Path("b")), 0640u) << "a new file has what the umask leaves";

    fs::create_symlink("circle", Path("circle"));
    EXPECT_EQ(OpenOutputFile(Path("circle")), nullptr);
}

TEST_F(Files, WhatCannotBeOpenedIsNull) {
    EXPECT_EQ(OpenInputFile(Path("missing")), nullptr);
    EXPECT_EQ(OpenInputFile(m_Folder.string()), nullptr);
    EXPECT_EQ(OpenInputFile(""), nullptr);
    Put(Path("a"), "old");
    EXPECT_EQ(OpenInputFile(Path("a") + std::string("\0b", 2)), nullptr);
    EXPECT_EQ(OpenOutputFile(Path("a") + std::string("\0b", 2)), nullptr);
    EXPECT_EQ(OpenOutputFile(""), nullptr);
    EXPECT_EQ(OpenOutputFile(m_Folder.string()), nullptr);
    EXPECT_EQ(OpenOutputFile(Path("new/")), nullptr);
    EXPECT_EQ(OpenOutputFile(Path("missing/a")), nullptr);
    EXPECT_EQ(OpenOutputFile(Path("a/b")), nullptr);
    EXPECT_EQ(OpenOutputFile(Path(std::string(300, 'x'))), nullptr);
    EXPECT_EQ(FilesInFolder(), 1u);
}

TEST_F(Files, PermissionsAreRespected) {
    if (::geteuid() == 0) GTEST_SKIP() << "permissions mean nothing to root";
    Put(Path("a"), "old");
    ASSERT_EQ(::chmod(Path("a").c_str(), 0444), 0);
    EXPECT_EQ(OpenOutputFile(Path("a")), nullptr) << "read-only, though its folder can be written";
    ASSERT_EQ(::chmod(Path("a").c_str(), 0644), 0);
    ASSERT_EQ(::chmod(m_Folder.c_str(), 0555), 0);
    EXPECT_TRUE(Save(Path("a"), "new")) << "its folder cannot be written, the file can";
    EXPECT_EQ(Get(Path("a")), "new");
    EXPECT_EQ(OpenOutputFile(Path("b")), nullptr);
}

TEST_F(Files, AFullDeviceIsAFailingCommit) {
    const auto file = OpenOutputFile("/dev/full");
    ASSERT_TRUE(file);
    file->Write("few", 3);
    EXPECT_THROW(file->Commit(), FileException);
    EXPECT_THROW(file->Commit(), FileException) << "a failure is not forgotten";
    const std::string much(200000, 'x');
    EXPECT_THROW(OpenOutputFile("/dev/full")->Write(much.data(), much.size()), FileException);
    EXPECT_TRUE(Save("/dev/null", much));
}

TEST_F(Files, AFullDiskKeepsTheOldFile) {
    Put(Path("a"), "old");
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const rlimit limit{100, before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    const std::string some(1000, 'x');
    const std::string much(200000, 'x');
    EXPECT_THROW(Save(Path("a"), some), FileException);
    EXPECT_THROW(Save(Path("a"), much), FileException);
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(Get(Path("a")), "old");
    EXPECT_EQ(FilesInFolder(), 1u);
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
