#include "lists/basFunctions.h"
#include "obd/Diagnosis.h"
#include "report/Report.h"
#include "support/GlobalsFixture.h"

namespace dravik {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::StartsWith;

class ReportFiles : public GlobalsTest {
 protected:
    ReportFiles() { InitReports(); }

    static void Diagnose() {
        basGlobal.Diagnosing.Found = std::make_shared<Diagnosis>();
        basGlobal.Diagnosing.Found->Vin = "WDRAV1K00VEH1CLE0";
    }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        if (fs::exists(folder_ / "reports")) {
            for (const auto& file : fs::directory_iterator(folder_ / "reports"))
                names.push_back(file.path().filename().string());
        }
        return names;
    }
    const fs::path reports_ = folder_ / "reports";
};

TEST_F(ReportFiles, AreNamedByTimeAndVehicleAndNeverReplaced) {
    Diagnose();
    for (int i = 0; i < 3; ++i) RequestReport(ReportFormat::Html);
    RequestReport(ReportFormat::Text);
    EXPECT_THAT(Names(), ::testing::SizeIs(4));
    for (const std::string& name : Names()) {
        EXPECT_THAT(name, MatchesRegex("[0-9-]+ [0-9-]+ WDRAV1K00VEH1CLE0(-[12])?\\.(html|txt)"));
    }
    EXPECT_THAT(ReportStatus(), MatchesRegex(".*WDRAV1K00VEH1CLE0\\.txt"));
    EXPECT_EQ(fakeScreen.Calls.back(),
              "message 64 Dravik: The report was saved:\n" + ReportStatus());
}

TEST_F(ReportFiles, WithoutADiagnosisOrAConnectionThereIsNothingToReport) {
    RequestReport(ReportFormat::Html);
    EXPECT_THAT(Names(), IsEmpty());
    EXPECT_THAT(fakeScreen.Calls, ElementsAre(HasSubstr("There is nothing to report")));
    EXPECT_THAT(ReportStatus(), StartsWith("There is nothing to report"));
}

TEST_F(ReportFiles, OneThatCannotBeSavedIsToldOnceAndLeavesNothing) {
    Diagnose();
    WriteFile("reports", "a file where the folder should be");
    RequestReport(ReportFormat::Html);
    EXPECT_THAT(fakeScreen.Calls,
                ElementsAre(StartsWith("message 16 Dravik: The report could not be saved:")));
    RequestReport(ReportFormat::Html, (folder_ / "nowhere/report.html").string());
    EXPECT_THAT(ReportStatus(), HasSubstr("nowhere/report.html"));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder_), {}), 3)
        << "the folders of the program and that file";
}

TEST_F(ReportFiles, ADiagnosisOfAnotherVehicleIsMadeAnewAndOneCancelledIsNotReported) {
    Diagnose();
    basGlobal.ConnState = kConnected;
    RequestReport(ReportFormat::Html);
    EXPECT_TRUE(Diagnosing());
    EXPECT_THAT(Names(), IsEmpty());
    basGlobal.tiReport.SetInterval(1);
    const auto ended = [] { return basGlobal.Reporting.Stage == ReportStage::None; };
    Diagnose();
    basGlobal.Diagnosing.Found->Cancelled = true;
    basGlobal.ConnState = kConnected;
    EXPECT_TRUE(Until(ended));
    EXPECT_THAT(Names(), IsEmpty());
    EXPECT_THAT(fakeScreen.Calls, IsEmpty()) << "the driver knows";

    basGlobal.Diagnosing.OfThisVehicle = true;
    RequestReport(ReportFormat::Html);
    EXPECT_TRUE(Until(ended));
    EXPECT_THAT(Names(), ::testing::SizeIs(1)) << "that one may be reported by itself";
}

TEST_F(ReportFiles, AreListedWithTheNewestFirstAndOpened) {
    fs::create_directory(reports_);
    WriteFile("reports/2026-11-20 08-00-00.txt", "2026-11-20 08:00:00 - ?\n\nDiagnosis report\n");
    WriteFile("reports/2026-11-21 08-00-00 VIN.html",
              "<!DOCTYPE html>\n<html lang=\"de\">\n<head>\n<meta charset=\"utf-8\"/>\n"
              "<title>2026-11-21 08:00:00 VIN P0133 P0301 P0420 U0100 C0021</title>\n");
    WriteFile("reports/2026-11-22 08-00-00 VIN.txt", "2026-11-22 08:00:00 VIN\n");
    WriteFile("reports/letter.txt", "Dear Sirs,\n");
    WriteFile("reports/2026.part", "");
    basGlobal.Diagnosing.Section = "reports";
    RenewDiagnosisList();

    ListSlot& list = basGlobal.Lists[kDiagnosisSlot];
    std::vector<std::string> lines;
    for (const ListEntry& entry : list.Entries) lines.push_back(entry.Picture + ": " + entry.Text);
    EXPECT_THAT(lines,
                ElementsAre("none: letter.txt", "good: 2026-11-22 08:00:00  VIN  No trouble codes",
                            "bad: 2026-11-21 08:00:00  VIN  P0133 P0301 P0420 U0100 +1",
                            "open: 2026-11-20 08:00:00  -  Could not be read"));

    std::vector<std::string> opened;
    const auto before = std::exchange(PlayMedium, [&opened](const std::string& file) {
        opened.push_back(file);
        return opened.size() == 1;
    });
    SelectListEntry(list, 3);
    ActivateListEntry(kDiagnosisSlot);
    EXPECT_THAT(fakeScreen.Calls, IsEmpty());
    SelectListEntry(list, 2);
    OpenReport();
    PlayMedium = before;
    EXPECT_THAT(opened, ElementsAre((reports_ / "2026-11-21 08-00-00 VIN.html").string(),
                                    (reports_ / "2026-11-22 08-00-00 VIN.txt").string()));
    EXPECT_THAT(fakeScreen.Calls, ElementsAre(HasSubstr("The report could not be opened:")));
}

}  // namespace
}  // namespace dravik
