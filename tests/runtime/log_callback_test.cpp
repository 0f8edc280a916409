#include "tests/runtime/runtime_fixtures.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <utility>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

class LogCallback : public LoggerTest {
protected:
    void SetUp() override {
        current = this;
        fileName.set(file.wstring());
    }
    void TearDown() override { current = nullptr; }

    static void keep(int number, const char* text) { current->calls.emplace_back(number, text); }

    static void fail(int number, const char* text) {
        keep(number, text);
        throw std::runtime_error("no room for\nthis");
    }

    static void failWithANumber(int number, const char* text) {
        keep(number, text);
        throw number;
    }

    static void logAgain(int number, const char* text) {
        keep(number, text);
        // A test that fails is better than a stack that overflows.
        if (current->calls.size() < 10) {
            current->two->log(level_enum::warn, std::string(text) + " again");
        }
    }

    static void lookAtTheLog(int, const char*) {
        keep(static_cast<int>(current->linesInFile().size()),
             current->linesOnStandardError().back().c_str());
    }

    static std::string complaintAbout(const std::string& reason) {
        return "vorlen_runtime: the debug callback threw an exception, which is dropped (" +
               reason + "): let the callback catch what it throws";
    }

    static inline LogCallback* current = nullptr;

    std::vector<std::pair<int, std::string>> calls;
};

TEST_F(LogCallback, gets_every_line_whatever_the_threshold) {
    level.set(L"critical");
    one->registerCallback(keep);
    one->logByEachMember("message");
    EXPECT_THAT(calls, ElementsAre(Pair(0, "message"), Pair(1, "message"), Pair(2, "message"),
                                   Pair(3, "message"), Pair(4, "message"), Pair(5, "message")));
}

TEST_F(LogCallback, gets_text_and_number_as_they_were_logged) {
    one->registerCallback(keep);
    one->log(static_cast<level_enum>(17), "line\nend \xE2\x80\xA8 \xFF");
    EXPECT_THAT(calls, ElementsAre(Pair(17, "line\nend \xE2\x80\xA8 \xFF")));
}

TEST_F(LogCallback, gets_the_lines_of_every_image) {
    one->registerCallback(keep);
    one->log(level_enum::info, "of one");
    two->log(level_enum::info, "of two");
    EXPECT_THAT(calls, ElementsAre(Pair(2, "of one"), Pair(2, "of two")));
}

TEST_F(LogCallback, is_not_called_after_null_was_registered) {
    one->registerCallback(keep);
    two->registerCallback(nullptr);
    one->log(level_enum::error, "message");
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_THAT(linesOnStandardError(), ElementsAre("error message"));
}

TEST_F(LogCallback, is_called_after_the_line_was_written) {
    one->registerCallback(lookAtTheLog);
    one->log(level_enum::error, "first");
    one->log(level_enum::error, "second");
    EXPECT_THAT(calls, ElementsAre(Pair(1, "error first"), Pair(2, "error second")));
}

TEST_F(LogCallback, is_reported_once_when_it_throws) {
    one->registerCallback(fail);
    EXPECT_NO_THROW(one->log(level_enum::error, "first"));
    EXPECT_THAT(complaints(), SizeIs(1));
    EXPECT_NO_THROW(two->log(level_enum::error, "second"));
    EXPECT_THAT(calls, ElementsAre(Pair(4, "first"), Pair(4, "second")));
    EXPECT_THAT(linesOnStandardError(), ElementsAre("error first", "error second"));
    EXPECT_THAT(withoutTimes(linesInFile()), ElementsAre("error first", "error second"));
    EXPECT_THAT(complaints(), ElementsAre(complaintAbout("no room for<U+000A>this")));
}

TEST_F(LogCallback, is_reported_when_it_throws_no_exception_object) {
    one->registerCallback(failWithANumber);
    EXPECT_NO_THROW(one->log(level_enum::error, "first"));
    EXPECT_NO_THROW(one->log(level_enum::error, "second"));
    EXPECT_THAT(calls, ElementsAre(Pair(4, "first"), Pair(4, "second")));
    EXPECT_THAT(complaints(), ElementsAre(complaintAbout("it is not a std::exception")));
}

TEST_F(LogCallback, is_not_called_for_its_own_lines) {
    one->registerCallback(logAgain);
    one->log(level_enum::error, "first");
    one->log(level_enum::error, "second");
    EXPECT_THAT(calls, ElementsAre(Pair(4, "first"), Pair(4, "second")));
    EXPECT_THAT(linesOnStandardError(), ElementsAre("error first", "warn first again",
                                                    "error second", "warn second again"));
}

} // namespace
} // namespace tests
