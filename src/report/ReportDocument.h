#pragma once

#include <string>
#include <vector>

#include "core/ChartPicture.h"
#include "obd/Diagnosis.h"
#include "platform/Clock.h"

/// What stands in a report, without its looks. Only the files of this folder include this. The
/// texts are bytes as they come from the vehicle and the language files; whoever writes them into a
/// file makes them harmless there.
namespace dravik {

/// How something stands that is told.
enum class Mark : unsigned char {
    None,
    Good,
    Bad,
    Open,  ///< not decided yet, or to be looked at some time
};

struct ReportRow {
    std::vector<std::string> Cells;
    Mark How = Mark::None;
};

struct ReportTable {
    std::string Title;              ///< may be empty
    std::vector<std::string> Head;  ///< empty: a row is a caption and a value
    std::vector<ReportRow> Rows;
    bool Narrow = false;  ///< many short values, which stand side by side where there is room
};

struct ReportSection {
    std::string Title;
    std::vector<std::string> Notes;
    std::vector<ReportTable> Tables;
    std::vector<ChartPicture> Pictures{};
};

struct ReportDocument {
    std::string Line;      ///< see ReportLine
    std::string Language;  ///< "de"
    std::string Title;
    std::vector<std::string> About;   ///< which vehicle, when
    std::vector<ReportRow> Verdicts;  ///< what matters most, one cell each
    std::vector<ReportSection> Sections;
    std::string Foot;
};

/// The report on a diagnosis, the values that are known now and these charts.
ReportDocument MakeReport(const Diagnosis& diagnosis, const std::vector<ChartPicture>& charts,
                          const LocalTime& now);

/// One self-contained file, also well-formed as XML.
std::string HtmlOf(const ReportDocument& report);
std::string PlainTextOf(const ReportDocument& report);

/// The text as UTF-8 without anything that a file may not hold: characters that are none, and that
/// control a terminal or a printer, become U+FFFD.
std::string Harmless(const std::string& text);

/// The characters of a vehicle identification number that may stand in a file name anywhere.
std::string PlainVin(const Diagnosis& diagnosis);

/// "2026-11-22 10:31:07".
std::string TimeStamp(const LocalTime& time);

/// What the list of reports is made from: time, vehicle ("-" where that is not known) and codes
/// ("?" where they were not read), parted by blanks. It is the first line of a text report, and the
/// title of an HTML one.
std::string ReportLine(const Diagnosis& diagnosis, const LocalTime& now);

}  // namespace dravik
