#include "simulation/import_redirect.h"
#include "tests/runtime/runtime_fixtures.h"
#include "tests/support/simulation.h"

#include <windows.h>

#include <gmock/gmock.h>

#include <fstream>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

class LogFile : public LoggerTest {
protected:
    std::string complaintOfWriting(const std::string& reason) const {
        const std::u8string shown = file.u8string();
        return "vorlen_runtime: the log file \"" + std::string(shown.begin(), shown.end()) +
               "\" cannot be written, and lines of it are missing (" + reason +
               "): make room on its disk, or set VORLEN_LOG_FILE to a file elsewhere";
    }
};

// Promise (Runtime and its log): The file that `VORLEN_LOG_FILE` names gets every line, those below
// the level of `VORLEN_LOG_LEVEL` too.
TEST_F(LogFile, gets_every_line_whatever_the_threshold) {
    level.set(L"critical");
    fileName.set(file.wstring());
    one->logByEachMember("message");
    EXPECT_THAT(withoutTimes(linesInFile()),
                ElementsAre("trace message", "debug message", "info message", "warn message",
                            "error message", "critical message"));
    EXPECT_THAT(linesOnStandardError(), ElementsAre("critical message"));
    EXPECT_THAT(complaints(), IsEmpty());
}

WINAPI void fakeSystemTime(SYSTEMTIME* now) {
    *now = {.wYear = 2001,
            .wMonth = 2,
            .wDayOfWeek = 6,
            .wDay = 3,
            .wHour = 4,
            .wMinute = 5,
            .wSecond = 6,
            .wMilliseconds = 7};
}

TEST_F(LogFile, may_have_a_name_beyond_ascii) {
    const auto named = folder.path / L"Protokoll \u00E4\u65E5.log";
    fileName.set(named.wstring());
    one->log(level_enum::info, "message");
    EXPECT_THAT(complaints(), IsEmpty());
    EXPECT_THAT(contentsOf(named), EndsWith(" info message\n"));
}

TEST_F(LogFile, starts_each_line_with_the_universal_time_to_the_millisecond) {
    const ImportRedirect time(runtime->image(), "GetSystemTime", addressOf(fakeSystemTime));
    fileName.set(file.wstring());
    one->log(level_enum::info, "message");
    EXPECT_EQ(contentsOf(file), "2001-02-03T04:05:06.007Z info message\n");
}

TEST_F(LogFile, can_be_read_while_the_runtime_is_loaded) {
    fileName.set(file.wstring());
    one->log(level_enum::info, "first");
    EXPECT_THAT(withoutTimes(linesInFile()), ElementsAre("info first"));
    one->log(level_enum::info, "second");
    EXPECT_THAT(withoutTimes(linesInFile()), ElementsAre("info first", "info second"));
}

TEST_F(LogFile, is_continued_when_the_runtime_is_loaded_again) {
    std::ofstream(file, std::ios::binary) << "from before\n";
    fileName.set(file.wstring());
    one->log(level_enum::info, "first");
    unload();
    load();
    one->log(level_enum::info, "second");
    const auto lines = linesInFile();
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0], "from before");
    EXPECT_EQ(withoutTime(lines[1]), "info first");
    EXPECT_EQ(withoutTime(lines[2]), "info second");
}

TEST_F(LogFile, is_closed_when_the_runtime_is_unloaded) {
    fileName.set(file.wstring());
    one->log(level_enum::info, "message");
    unload();
    const HANDLE alone = CreateFileW(file.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                     FILE_ATTRIBUTE_NORMAL, nullptr);
    EXPECT_NE(alone, INVALID_HANDLE_VALUE) << "error " << GetLastError();
    CloseHandle(alone);
}

TEST_F(LogFile, is_not_made_before_an_image_logs) {
    fileName.set(file.wstring());
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_TRUE(one->isInitialized());
    EXPECT_TRUE(std::filesystem::exists(file));
}

TEST_F(LogFile, can_be_moved_away_while_the_runtime_is_loaded) {
    fileName.set(file.wstring());
    one->log(level_enum::info, "message");
    EXPECT_NO_THROW(std::filesystem::rename(file, folder.path / L"old.log"));
}

// A name of a file that cannot be used, how a complaint shows it, and the reason.
struct UnusableName {
    std::wstring name;
    std::string shownAs;
    std::string reason;
};

TEST_F(LogFile, is_reported_once_when_it_cannot_be_opened) {
    std::filesystem::create_directory(file);
    const std::u8string folderName = file.u8string();
    const UnusableName names[] = {
        {L"no such folder\\\u00E4.log", "no such folder\\\xC3\xA4.log",
         "error 3: No such file or directory"},
        {file.wstring(), {folderName.begin(), folderName.end()}, "error 5: Permission denied"},
        {L"what?\nnow|\xD800", "what?<U+000A>now|\xEF\xBF\xBD",
         "error 123: No such file or directory"}};
    std::vector<std::string> expected;
    for (const UnusableName& unusable : names) {
        unload();
        load();
        fileName.set(unusable.name);
        EXPECT_TRUE(one->isInitialized());
        one->log(level_enum::error, "first");
        two->log(level_enum::error, "second");
        expected.push_back("vorlen_runtime: the log file \"" + unusable.shownAs +
                           "\" cannot be opened (" + unusable.reason +
                           "): set VORLEN_LOG_FILE to a file that may be written, in a folder that "
                           "exists");
        EXPECT_EQ(complaints(), expected);
    }
    EXPECT_EQ(linesOnStandardError().size(), 6u);
}

WINAPI BOOL fullDisk(HANDLE file, const void* bytes, DWORD size, DWORD* written, OVERLAPPED* how) {
    if (file != GetStdHandle(STD_ERROR_HANDLE)) {
        *written = 0;
        SetLastError(ERROR_DISK_FULL);
        return FALSE;
    }
    return WriteFile(file, bytes, size, written, how);
}

WINAPI BOOL nothingTaken(HANDLE, const void*, DWORD, DWORD* written, OVERLAPPED*) {
    *written = 0;
    return TRUE;
}

WINAPI BOOL byteByByte(HANDLE file, const void* bytes, DWORD, DWORD* written, OVERLAPPED* how) {
    return WriteFile(file, bytes, 1, written, how);
}

TEST_F(LogFile, is_written_again_after_a_full_disk_was_reported_once) {
    fileName.set(file.wstring());
    one->log(level_enum::error, "first");
    {
        const ImportRedirect disk(runtime->image(), "WriteFile", addressOf(fullDisk));
        one->log(level_enum::error, "second");
        two->log(level_enum::error, "third");
    }
    one->log(level_enum::error, "fourth");
    EXPECT_THAT(complaints(),
                ElementsAre(complaintOfWriting("error 112: No space left on device")));
    EXPECT_THAT(linesOnStandardError(),
                ElementsAre("error first", "error second", "error third", "error fourth"));
    EXPECT_THAT(withoutTimes(linesInFile()), ElementsAre("error first", "error fourth"));
}

TEST_F(LogFile, does_not_hold_up_the_program_when_it_takes_nothing) {
    fileName.set(file.wstring());
    one->log(level_enum::error, "first");
    {
        const ImportRedirect disk(runtime->image(), "WriteFile", addressOf(nothingTaken));
        one->log(level_enum::error, "second");
    }
    EXPECT_THAT(complaints(), ElementsAre(complaintOfWriting("error 29: Write fault")));
    EXPECT_THAT(withoutTimes(linesInFile()), ElementsAre("error first"));
}

TEST_F(LogFile, gets_whole_lines_when_the_system_takes_parts) {
    fileName.set(file.wstring());
    const ImportRedirect disk(runtime->image(), "WriteFile", addressOf(byteByByte));
    one->log(level_enum::error, "message");
    EXPECT_THAT(withoutTimes(linesInFile()), ElementsAre("error message"));
    EXPECT_THAT(linesOnStandardError(), ElementsAre("error message"));
}

} // namespace
} // namespace tests
