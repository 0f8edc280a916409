#include "tests/acceptance/acceptance.h"

#include "platform/text.h"
#include "tests/acceptance/child.h"
#include "tests/acceptance/redaction.h"
#include "tests/acceptance/system.h"
#include "tests/acceptance/test_results.h"

#include <windows.h>

#include <nlohmann/json.hpp>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace tests {

namespace {

using Json = nlohmann::ordered_json;
using std::filesystem::path;

constexpr auto timeOfCommand = std::chrono::minutes(2);
// Bytes of an output in the report: enough for what all facts of a suite print, whose results are
// written only when the last one has ended.
constexpr std::size_t mostOutput = 64'000;
constexpr const char* reportName = "acceptance-report.json";

std::string readFile(const path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void print(const std::string& text) {
    static_cast<void>(std::fputs(text.c_str(), stdout));
    static_cast<void>(std::fflush(stdout));
}

std::wstring wide(const std::string& ascii) {
    return {ascii.begin(), ascii.end()};
}

// An empty folder for the files of the programs. The destructor removes it.
class WorkFolder {
public:
    explicit WorkFolder(path where) : place(std::move(where)) {
        std::error_code error;
        if (is_directory(place, error)) { // of a run that was ended before it could remove it
            remove_all(place, error);
        }
        if (!create_directory(place, error)) {
            throw std::runtime_error(
                "this folder cannot be written, or is used by another run; unzip the kit into a "
                "folder of your own, such as one on your desktop");
        }
        // GoogleTest writes its files with names in the system's code page.
        BOOL changed = FALSE;
        WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, place.c_str(), -1, nullptr, 0, nullptr,
                            &changed);
        if (changed != FALSE) {
            throw std::runtime_error("the name of this folder has letters that this system's code "
                                     "page does not have; unzip the kit into another folder, such "
                                     "as C:\\acceptance");
        }
    }
    ~WorkFolder() {
        std::error_code ignored; // a file may still be in use
        remove_all(place, ignored);
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    const path place;
};

// Settings of this user must not change what the programs do.
void forgetSettings() {
    const std::unique_ptr<wchar_t, decltype(&FreeEnvironmentStringsW)> block(
        GetEnvironmentStringsW(), FreeEnvironmentStringsW);
    for (const wchar_t* each = block.get(); *each != L'\0'; each += std::wstring(each).size() + 1) {
        const std::wstring name = std::wstring(each).substr(0, std::wstring(each).find(L'=', 1));
        if (name.starts_with(L"VORLEN_") || name.starts_with(L"GTEST_")) {
            SetEnvironmentVariableW(name.c_str(), nullptr);
        }
    }
}

class Acceptance {
public:
    explicit Acceptance(path folder)
        : kit(std::move(folder)), work(kit / L"tests" / L"results"),
          redaction(Redaction::ofThisMachine(kit.wstring())) {}

    Totals run() {
        const Json list = Json::parse(readFile(kit / L"tests" / L"programs.json"), nullptr, false);
        if (list.is_discarded()) {
            throw std::runtime_error("tests\\programs.json is missing; unzip the whole kit");
        }
        removeEarlierReport();
        describe(list);
        steps = list.at("programs").size() + 1;
        for (const Json& program : list["programs"]) {
            runProgram(program);
        }
        recordDesktop();
        report["totals"] = {{"passed", totals.passed},
                            {"failed", totals.failed},
                            {"not measured", totals.notMeasured}};
        std::ofstream file(kit / reportName, std::ios::binary);
        file << report.dump(2) << '\n' << std::flush;
        if (!file) {
            throw std::runtime_error(std::string(reportName) + " cannot be written");
        }
        return totals;
    }

private:
    // So that a run that is ended leaves no report of an earlier one, and one that could not write
    // its own does not begin.
    void removeEarlierReport() const {
        std::error_code error;
        remove(kit / reportName, error);
        if (error) {
            throw std::runtime_error(std::string(reportName) +
                                     " cannot be replaced; close the program that has it open");
        }
    }

    void describe(const Json& list) {
        const System system = thisSystem();
        report["format"] = "vorlen-monitor acceptance";
        report["version"] = 1;
        report["kit"] = list.at("version");
        report["system"] = {{"name", system.name},
                            {"version", system.version},
                            {"administrator", system.administrator}};
        print("vorlen-monitor " + list["version"].get<std::string>() + ", acceptance on " +
              system.name + " (" + system.version + ")\n");
        std::istringstream versions(runCommand(L"--version").output);
        for (std::string line; std::getline(versions, line);) {
            report["products"].push_back(redaction.withoutNames(line.substr(0, line.find('\r'))));
        }
        report["programs"] = Json::array();
        report["facts"] = Json::array();
    }

    ChildResult runCommand(const std::wstring& arguments) const {
        try {
            return runChild(kit / L"bin" / L"vorlen-monitor.exe", arguments, work.place,
                            timeOfCommand);
        } catch (const std::system_error& error) {
            return {std::nullopt, error.what()};
        }
    }

    void beginStep(const std::string& name) {
        const std::string number = std::to_string(++step);
        print(std::string(number.size() < 2 ? " " : "") + number + '/' + std::to_string(steps) +
              ' ' + name + ": ");
    }

    // What one process of a test program found.
    struct Run {
        Json tests = Json::array();
        Totals totals;
        std::string outcome; // what the tests do not explain; redacted, as the output is then
        std::string output;
    };

    void runProgram(const Json& program) {
        const std::string name = program.at("name");
        beginStep(name);
        Json result{{"name", name}, {"tier", program.at("tier")}};
        Run run = name == "facts" ? runSuites(program) : runTests(program, name);
        if (!run.outcome.empty()) {
            print(run.outcome + "; ");
            result["outcome"] = run.outcome;
            result["output"] = run.output;
        }
        totals += run.totals;
        endStep(run.totals, run.tests);
        if (name == "facts") {
            report["facts"] = std::move(run.tests);
        } else {
            result["tests"] = std::move(run.tests);
        }
        report["programs"].push_back(std::move(result));
    }

    // Each suite in a process of its own, with all of the program's time: one that hangs or crashes
    // costs no answer of another one.
    Run runSuites(const Json& program) const {
        const std::string name = program.at("name");
        const auto suites = suitesOf(program);
        if (suites.empty()) {
            return runTests(program, name); // finds out why
        }
        Run all;
        for (const auto& [suite, filter] : suites) {
            const Run run = runTests(program, name + '.' + suite, " --gtest_filter=" + filter);
            all.tests.insert(all.tests.end(), run.tests.begin(), run.tests.end());
            all.totals += run.totals;
            if (!run.outcome.empty()) {
                all.outcome += (all.outcome.empty() ? "" : "; ") + suite + ": " + run.outcome;
                all.output += run.output;
            }
        }
        return all;
    }

    // The suites with their filters; none when the program does not list them.
    std::vector<std::pair<std::string, std::string>> suitesOf(const Json& program) const {
        const std::string resultName = program["name"].get<std::string>() + ".list";
        try {
            start(program, resultName, " --gtest_list_tests", timeOfCommand);
            return filtersOf(readFile(resultsOf(resultName)));
        } catch (const std::system_error&) {
            return {};
        } catch (const Json::exception&) {
            return {};
        }
    }

    Run runTests(const Json& program, const std::string& resultName,
                 const std::string& moreArguments = {}) const {
        const auto redacted = [&](const std::string& text) {
            return program["tier"] == "real" ? redaction.withoutQuotes(text)
                                             : redaction.withoutNames(text);
        };
        Run run;
        std::string output;
        std::string outcome;
        try {
            const ChildResult child = start(program, resultName, moreArguments,
                                            std::chrono::seconds(program.at("seconds").get<int>()));
            output = child.output;
            outcome = !child.exitCode        ? "its time was over"
                      : *child.exitCode == 0 ? ""
                                             : "exit code " + std::to_string(*child.exitCode);
            run.tests = testsOf(readFile(resultsOf(resultName)), redacted);
        } catch (const std::system_error& error) {
            outcome = error.what();
        } catch (const Json::exception&) {
            outcome += outcome.empty() ? "no results" : ", no results";
        }
        run.totals = totalsOf(run.tests);
        if (run.totals.failed == 0 && !outcome.empty()) {
            run.totals.failed = 1;
            run.outcome = redacted(outcome);
            run.output = endOf(redacted(output), mostOutput);
        }
        return run;
    }

    path resultsOf(const std::string& name) const { return work.place / wide(name + ".json"); }

    ChildResult start(const Json& program, const std::string& resultName,
                      const std::string& moreArguments, std::chrono::milliseconds limit) const {
        const std::string arguments = program.at("arguments");
        return runChild(
            kit / L"tests" / wide(program.at("file")),
            wide(arguments + " --gtest_output=json:" + resultName + ".json" + moreArguments),
            work.place, limit);
    }

    static void endStep(const Totals& found, const Json& tests) {
        print(std::to_string(found.passed) + " passed");
        if (found.failed > 0) {
            print(", " + std::to_string(found.failed) + " failed");
        }
        if (found.notMeasured > 0) {
            print(", " + std::to_string(found.notMeasured) + " not measured");
        }
        print("\n");
        for (const Json& test : tests) {
            if (test["result"] == "failed") {
                print("      failed: " + test["name"].get<std::string>() + '\n');
            } else if (test["result"] == "not measured") {
                print("      " + test["name"].get<std::string>() + ": " + test.value("reason", "") +
                      '\n');
            }
        }
    }

    void recordDesktop() {
        beginStep("recording of the desktop");
        const ChildResult child = runCommand(L"record recording.json --redact");
        Json recording = Json::parse(readFile(work.place / L"recording.json"), nullptr, false);
        if (child.exitCode == DWORD{0} && !recording.is_discarded()) {
            report["recording"] = std::move(recording);
            ++totals.passed;
            print("made\n");
        } else {
            report["recording"] = nullptr;
            report["recording output"] = endOf(redaction.withoutQuotes(child.output), mostOutput);
            ++totals.failed;
            print("failed\n");
        }
    }

    const path kit;
    const WorkFolder work;
    const Redaction redaction;
    Json report;
    Totals totals;
    std::size_t step = 0;
    std::size_t steps = 0;
};

} // namespace

bool runAcceptance(const path& kit) {
    forgetSettings();
    const Totals totals = Acceptance(kit).run();
    print(std::string(totals.failed == 0 ? "Passed: " : "Failed: ") +
          std::to_string(totals.passed) + " passed, " + std::to_string(totals.failed) +
          " failed, " + std::to_string(totals.notMeasured) + " not measured; the report is " +
          reportName + "\n");
    return totals.failed == 0;
}

} // namespace tests
