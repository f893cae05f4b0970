#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "platform/files.h"
#include "platform/host/faults.h"
#include "platform/host/last_error.h"
#include "platform/host/message_log.h"
#include "platform/host/open_files.h"

namespace nira {
namespace {

// A folder of its own for every test, named as the program names folders.
class FilesOnTheHost : public ::testing::Test {
  protected:
    void SetUp() override {
        char name[] = "/tmp/nira_files_XXXXXX";
        ASSERT_NE(mkdtemp(name), nullptr);
        folder_ = name;
    }
    void TearDown() override {
        EXPECT_EQ(HostOpenFileCount(), 0u);
        FaultResetAll();
        chmod(folder_.c_str(), 0700);
        std::system(("rm -rf " + folder_).c_str());
    }
    std::u16string Path(const char16_t* name) {
        std::u16string path;
        for (const char letter : folder_) path += letter == '/' ? u'\\' : static_cast<char16_t>(letter);
        return path + u"\\" + name;
    }
    void Make(const std::u16string& path, const std::string& content) {
        FileHandle file = FileCreateForWriting(path.c_str());
        ASSERT_NE(file, nullptr);
        uint32_t written = 0;
        ASSERT_TRUE(FileWrite(file, content.data(), static_cast<uint32_t>(content.size()), &written));
        ASSERT_EQ(written, content.size());
        ASSERT_TRUE(FileFlush(file));
        ASSERT_TRUE(FileClose(file));
    }
    std::string Content(const std::u16string& path) {
        FileHandle file = FileOpenForReading(path.c_str());
        if (file == nullptr) return "(not opened)";
        std::string content;
        char piece[8];
        uint32_t read = 0;
        while (FileRead(file, piece, sizeof(piece), &read) && read > 0) content.append(piece, read);
        FileClose(file);
        return content;
    }
    std::string folder_;
};

TEST_F(FilesOnTheHost, WriteAndReadBackUnderNamesOfEveryScript) {
    for (const char16_t* name :
         {u"a.txt", u"\u00E4 \u65E5\u672C.txt", u"\U0001F600.txt", u"lone\xD800.txt"}) {
        Make(Path(name), "twelve bytes");
        EXPECT_EQ(Content(Path(name)), "twelve bytes");
        EXPECT_TRUE(FileExists(Path(name).c_str()));
    }
    struct stat info;
    EXPECT_EQ(stat((folder_ + "/\xC3\xA4 \xE6\x97\xA5\xE6\x9C\xAC.txt").c_str(), &info), 0);
    EXPECT_EQ(stat((folder_ + "/\xF0\x9F\x98\x80.txt").c_str(), &info), 0);
}

TEST_F(FilesOnTheHost, CreatingEmptiesWhatWasThere) {
    Make(Path(u"a"), "long content");
    Make(Path(u"a"), "new");
    EXPECT_EQ(Content(Path(u"a")), "new");
}

TEST_F(FilesOnTheHost, SayWhyOpeningFails) {
    EXPECT_EQ(FileOpenForReading(Path(u"none").c_str()), nullptr);
    EXPECT_EQ(HostLastError(), kErrorFileNotFound);
    EXPECT_EQ(FileOpenForReading(Path(u"none\\none").c_str()), nullptr);
    EXPECT_EQ(HostLastError(), kErrorPathNotFound);
    EXPECT_EQ(FileOpenForReading(Path(u"").c_str()), nullptr);
    EXPECT_EQ(HostLastError(), kErrorAccessDenied);
    EXPECT_EQ(FileOpenForReading(u""), nullptr);
    EXPECT_EQ(HostLastError(), kErrorPathNotFound);
    EXPECT_EQ(FileOpenForReading(Path(u"\"quoted\"").c_str()), nullptr);
    EXPECT_EQ(HostLastError(), kErrorInvalidName);
    EXPECT_EQ(FileCreateForWriting(Path(u"").c_str()), nullptr);
    EXPECT_EQ(HostLastError(), kErrorAccessDenied);
    EXPECT_EQ(FileCreateForWriting(Path(u"none\\a").c_str()), nullptr);
    EXPECT_EQ(HostLastError(), kErrorPathNotFound);
}

TEST_F(FilesOnTheHost, RespectReadOnlyEvenForRoot) {
    Make(Path(u"a"), "kept");
    chmod((folder_ + "/a").c_str(), 0444);
    EXPECT_EQ(FileCreateForWriting(Path(u"a").c_str()), nullptr);
    EXPECT_EQ(HostLastError(), kErrorAccessDenied);
    EXPECT_FALSE(FileDelete(Path(u"a").c_str()));
    EXPECT_EQ(HostLastError(), kErrorAccessDenied);
    EXPECT_EQ(Content(Path(u"a")), "kept");
    chmod(folder_.c_str(), 0555);
    EXPECT_EQ(FileCreateForWriting(Path(u"b").c_str()), nullptr);
    EXPECT_EQ(HostLastError(), kErrorAccessDenied);
    EXPECT_FALSE(FileMove(Path(u"a").c_str(), Path(u"b").c_str()));
}

TEST_F(FilesOnTheHost, ShareAsWindowsDoes) {
    Make(Path(u"a"), "x");
    FileHandle reader = FileOpenForReading(Path(u"a").c_str());
    FileHandle second = FileOpenForReading(Path(u"a").c_str());
    EXPECT_NE(second, nullptr);
    EXPECT_EQ(FileCreateForWriting(Path(u"a").c_str()), nullptr);
    EXPECT_EQ(HostLastError(), kErrorSharingViolation);
    EXPECT_FALSE(FileMove(Path(u"a").c_str(), Path(u"b").c_str()));
    EXPECT_FALSE(FileDelete(Path(u"a").c_str()));
    EXPECT_EQ(HostLastError(), kErrorSharingViolation);
    FileClose(second);
    FileClose(reader);

    FileHandle writer = FileCreateForWriting(Path(u"a").c_str());
    EXPECT_EQ(FileOpenForReading(Path(u"a").c_str()), nullptr);
    EXPECT_EQ(HostLastError(), kErrorSharingViolation);
    MessageLogReset();
    ShowMessage(nullptr, u"", u"", MessageKind::kPlain);
    EXPECT_EQ(MessageLog().back().openFiles, 1u);
    FileClose(writer);
}

TEST_F(FilesOnTheHost, MoveNeverOverwrites) {
    Make(Path(u"a"), "old");
    Make(Path(u"b"), "other");
    EXPECT_FALSE(FileMove(Path(u"a").c_str(), Path(u"b").c_str()));
    EXPECT_EQ(HostLastError(), kErrorAlreadyExists);
    EXPECT_EQ(Content(Path(u"b")), "other");
    EXPECT_TRUE(FileDelete(Path(u"b").c_str()));
    EXPECT_TRUE(FileMove(Path(u"a").c_str(), Path(u"b").c_str()));
    EXPECT_FALSE(FileExists(Path(u"a").c_str()));
    EXPECT_EQ(Content(Path(u"b")), "old");
    EXPECT_FALSE(FileMove(Path(u"a").c_str(), Path(u"c").c_str()));
    EXPECT_EQ(HostLastError(), kErrorFileNotFound);
}

TEST_F(FilesOnTheHost, ReadShortOrNothingOnDemand) {
    Make(Path(u"a"), "12345678");
    FileHandle file = FileOpenForReading(Path(u"a").c_str());
    char buffer[8];
    uint32_t read = 99;
    {
        FaultScope fault(FaultPoint::kFileRead, {.effect = FaultEffect::kShort});
        EXPECT_TRUE(FileRead(file, buffer, 6, &read));
        EXPECT_EQ(read, 3u);
    }
    {
        FaultScope fault(FaultPoint::kFileRead, {});
        EXPECT_FALSE(FileRead(file, buffer, 8, &read));
        EXPECT_EQ(HostLastError(), kErrorBadChecksum);
        EXPECT_TRUE(FileRead(file, buffer, 8, &read));
        EXPECT_EQ(read, 5u);
        EXPECT_EQ(std::string(buffer, 5), "45678");
    }
    FileClose(file);
}

TEST_F(FilesOnTheHost, WriteInPartNothingOrNotAtAllOnDemand) {
    FileHandle file = FileCreateForWriting(Path(u"a").c_str());
    uint32_t written = 99;
    {
        FaultScope fault(FaultPoint::kFileWrite, {.effect = FaultEffect::kShort});
        EXPECT_TRUE(FileWrite(file, "abcdef", 6, &written));
        EXPECT_EQ(written, 3u);
    }
    {
        FaultScope fault(FaultPoint::kFileWrite, {.effect = FaultEffect::kNothing});
        EXPECT_TRUE(FileWrite(file, "zz", 2, &written));
        EXPECT_EQ(written, 0u);
    }
    {
        FaultScope fault(FaultPoint::kFileWrite, {});
        EXPECT_FALSE(FileWrite(file, "zz", 2, &written));
        EXPECT_EQ(HostLastError(), kErrorDiskFull);
    }
    FileClose(file);
    EXPECT_EQ(Content(Path(u"a")), "abc");
}

TEST_F(FilesOnTheHost, EveryOperationFailsOnDemand) {
    Make(Path(u"a"), "x");
    FaultScope fault(FaultPoint::kAnyFile, {.first = 1, .howMany = 4});
    EXPECT_EQ(FileOpenForReading(Path(u"a").c_str()), nullptr);
    EXPECT_EQ(FileCreateForWriting(Path(u"a").c_str()), nullptr);
    EXPECT_FALSE(FileMove(Path(u"a").c_str(), Path(u"b").c_str()));
    EXPECT_FALSE(FileDelete(Path(u"a").c_str()));
    EXPECT_EQ(Content(Path(u"a")), "x");

    FileHandle file = FileCreateForWriting(Path(u"a").c_str());
    FaultScope flush(FaultPoint::kFileFlush, {});
    FaultScope close(FaultPoint::kFileClose, {});
    EXPECT_FALSE(FileFlush(file));
    EXPECT_FALSE(FileClose(file));
    EXPECT_EQ(HostLastError(), kErrorIoDevice);
    EXPECT_EQ(HostOpenFileCount(), 0u);
    EXPECT_TRUE(FileClose(nullptr));
}

}  // namespace
}  // namespace nira
