#pragma once

#include <string>
#include <string_view>

/// The report on a vehicle: the last diagnosis, the values of now and the charts of the page as one
/// file, which can be printed, kept or sent on, in the driver's language. And the reports that
/// there are, as a list.
namespace dravik {

enum class ReportFormat : unsigned char {
    Html,  ///< one file with everything in it, for a browser or the printer
    Text,
};

/// Connects the timer tiReport to this module. Called once, before the timers run.
void InitReports();

/// Asks for a report; tiReport writes it. Without a diagnosis of the vehicle that is connected one
/// is made first, and while connected the values that the vehicle has are read. Its outcome is told
/// in a message, unless the driver has cancelled that diagnosis. Does nothing while a report is
/// being made.
///
/// @param file  where to write it; empty: under a name of its own in ReportFolder. A file of the
///              given name is replaced, one of the folder never.
void RequestReport(ReportFormat format, const std::string& file = {});

/// Where reports go: "reports" in the program folder.
std::string ReportFolder();

/// Where the report that is being made is; afterwards the name of its file, or why there is none.
/// Empty before the first.
const std::string& ReportStatus();

/// Fills the list slot "diagnosis" with the reports, the newest first. The tag of an entry is
/// kReportTag and the path; its picture is "good", "bad" (there were codes) or "open" (the codes
/// had not been read).
void ListReports();

/// Opens a report in the system's viewer: the selected one where the list shows reports, else the
/// one that was written last. One that cannot be opened is told to the user.
void OpenReport();

}  // namespace dravik
