#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "core/basGlobal.h"
#include "lists/basFunctions.h"
#include "obd/Diagnosis.h"
#include "platform/Paths.h"
#include "platform/Text.h"
#include "report/Report.h"
#include "settings/Words.h"

namespace dravik {

namespace {

constexpr std::size_t kMostListed = 200;  // each of them is looked into
constexpr std::size_t kMostCodes = 4;     // that an entry names

/// The names of the reports, the newest first: they begin with the time.
std::vector<std::string> ReportNames() {
    std::vector<std::string> names;
    for (const char* ending : {".html", ".txt"}) {
        for (std::string& name : FilesMatching(ReportFolder(), ending))
            names.push_back(std::move(name));
    }
    std::sort(names.begin(), names.end(), std::greater<>());
    if (names.size() > kMostListed) names.resize(kMostListed);
    return names;
}

/// What ReportLine has written at the front of a report.
std::string LineOf(const std::string& file) {
    const std::string path = ResolvePath(file);
    std::ifstream stream(std::filesystem::path(std::u8string(path.begin(), path.end())));
    constexpr int kFirstLines = 6;
    constexpr std::string_view kTitle = "<title>";
    std::string first;
    std::string line;
    for (int i = 0; i < kFirstLines && std::getline(stream, line); ++i) {
        if (i == 0) first = line;
        if (line.starts_with(kTitle))
            return line.substr(kTitle.size(), line.rfind('<') - kTitle.size());
    }
    return first;
}

bool IsCode(const std::string& word) {
    constexpr std::size_t kLength = 5;
    return word.size() == kLength && std::string_view("PCBU").find(word[0]) != std::string::npos &&
           std::all_of(word.begin() + 1, word.end(),
                       [](unsigned char c) { return std::isxdigit(c) != 0; });
}

ListEntry EntryOf(const std::string& name) {
    const std::string file = JoinPath(ReportFolder(), name);
    std::istringstream words(LineOf(file));
    std::string date;
    std::string time;
    std::string vin;
    words >> date >> time >> vin;
    const std::string tag = std::string(kReportTag) + file;
    if (!name.starts_with(date) || vin.empty()) return {name, "none", tag};  // not one of ours

    std::string codes;
    std::size_t count = 0;
    bool unread = false;
    for (std::string word; words >> word;) {
        unread |= word == "?";
        if (IsCode(word) && ++count <= kMostCodes) codes += " " + word;
    }
    if (count > kMostCodes) codes += " +" + std::to_string(count - kMostCodes);
    if (count == 0) codes = " " + (unread ? LackText(Lack::Unreadable) : Word("No trouble codes"));
    return {date + " " + time + "  " + vin + " " + codes,
            count > 0 ? "bad"
            : unread  ? "open"
                      : "good",
            tag};
}

}  // namespace

void ListReports() {
    ListSlot& list = basGlobal.Lists[kDiagnosisSlot];
    const int selected = list.Selected;
    const bool shown = !list.Entries.empty() && list.Entries.front().Tag.starts_with(kReportTag);
    ClearList(list);
    for (const std::string& name : ReportNames()) AddListEntry(list, EntryOf(name));
    if (shown) SelectListEntry(list, selected);
}

void OpenReport() {
    const ListSlot& list = basGlobal.Lists[kDiagnosisSlot];
    const bool listed = !list.Entries.empty() && list.Entries.front().Tag.starts_with(kReportTag);
    if (listed)
        ActivateListEntry(kDiagnosisSlot);
    else if (basGlobal.Reporting.Outcome == ReportOutcome::Written)
        OpenReportFile(basGlobal.Reporting.File);
}

}  // namespace dravik
