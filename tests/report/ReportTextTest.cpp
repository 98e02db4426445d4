#include <QXmlStreamReader>
#include <set>

#include "obd/Diagnosis.h"
#include "platform/Text.h"
#include "report/ReportDocument.h"
#include "support/GlobalsFixture.h"

namespace dravik {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

constexpr LocalTime kNow{
    .Year = 2026, .Month = 11, .Day = 22, .Hour = 10, .Minute = 31, .Second = 7};

/// What a strict reader finds in a report.
struct ReadHtml {
    explicit ReadHtml(const std::string& html) {
        QXmlStreamReader reader(QByteArray::fromStdString(html));
        while (!reader.atEnd()) {
            reader.readNext();
            if (reader.isStartElement()) {
                Elements.insert(reader.name().toString().toStdString());
                for (const QXmlStreamAttribute& attribute : reader.attributes())
                    Attributes.insert(attribute.name().toString().toStdString());
            } else if (reader.isCharacters() && !reader.isWhitespace()) {
                Texts.push_back(reader.text().toString().toStdString());
            }
        }
        Error = reader.errorString().toStdString();
    }
    std::string Error;
    std::set<std::string> Elements, Attributes;
    std::vector<std::string> Texts;
};

class ReportTextTest : public GlobalsTest {
 protected:
    ReportTextTest() {
        basGlobal.Diagnosing.Found = std::make_shared<Diagnosis>();
        basGlobal.DescriptionFile = (folder_ / "codes.ini").string();
    }
    Diagnosis& Found() { return *basGlobal.Diagnosing.Found; }
};

TEST_F(ReportTextTest, NothingThatAVehicleOrALanguageSaysGetsOutOfItsPlace) {
    const std::string script = "<script>alert(\"1\")</script>";
    const std::string markup = "</title></td><img src='x' onerror=\"a()\"/> & &lt; ]]>";
    WriteFile("codes.ini", "[errorcodes]\nP0133=" + markup + "\n");
    Found().Vin = script;
    Found().Units = {{0x7E8, "ECM\x1B[31m\x01\xFF", {markup}, {}}};
    Found().Codes = {{"P0133", CodeKind::Stored, 0x7E8, 0}};
    Found().Frames = {{"P0133", 0x7E8, 0, {{0x0C, {0x1A, 0xF8}}}}};
    basGlobal.SensorCount = 1;
    basGlobal.Sensors[0].Source = "obd_0C";
    basGlobal.Sensors[0].Caption = script;
    basGlobal.Sensors[0].Unit = "\"1/min\"\n";
    basGlobal.Sensors[0].Factor = 0.25F;

    const ReportDocument report = MakeReport(Found(), {{markup, "\x89PNG"}}, kNow);
    const ReadHtml html(HtmlOf(report));
    EXPECT_EQ(html.Error, "");
    EXPECT_THAT(html.Elements, Not(Contains("script")));
    EXPECT_THAT(html.Attributes, Not(Contains("onerror")));
    EXPECT_THAT(html.Attributes, Not(Contains("href")));
    EXPECT_THAT(html.Texts,
                AllOf(Contains(script), Contains(markup), Contains("1726 \"1/min\"\uFFFD")))
        << "they are there as they are";
    EXPECT_THAT(html.Texts, Contains("ECM\uFFFD[31m\uFFFDÿ"));
    EXPECT_EQ(html.Texts.front(), "2026-11-22 10:31:07 scriptalert1script P0133");

    const std::string text = PlainTextOf(report);
    EXPECT_TRUE(IsUtf8(text));
    EXPECT_THAT(text, AllOf(Not(HasSubstr("\x1B")), HasSubstr(script), HasSubstr(markup)));
}

TEST_F(ReportTextTest, APictureIsInTheFileItself) {
    const std::string html = HtmlOf(MakeReport(Found(), {{"Speed", "Man"}, {"", "Ma"}}, kNow));
    EXPECT_THAT(html, HasSubstr("alt=\"Speed\" src=\"data:image/png;base64,TWFu\""));
    EXPECT_THAT(html, HasSubstr("base64,TWE=\""));
}

TEST_F(ReportTextTest, WhatCouldNotBeReadIsNeverTheSameAsNothingWrong) {
    Diagnosis& found = Found();
    const std::string clean = PlainTextOf(MakeReport(found, {}, kNow));
    EXPECT_THAT(clean, AllOf(StartsWith("2026-11-22 10:31:07 -\n"), HasSubstr("No trouble codes")));
    found.Missing = {{DiagnosisPart::StoredCodes, Lack::NoAnswer},
                     {DiagnosisPart::FreezeFrames, Lack::NoAnswer},
                     {DiagnosisPart::Readiness, Lack::Refused}};
    const std::string unread = PlainTextOf(MakeReport(found, {}, kNow));
    EXPECT_THAT(unread,
                AllOf(StartsWith("2026-11-22 10:31:07 - ?\n"), Not(HasSubstr("No trouble codes")),
                      Not(HasSubstr("No freeze frame")), HasSubstr("* Stored codes: No answer"),
                      HasSubstr("Monitors: Refused by the vehicle")));
    found.Missing = {{DiagnosisPart::PendingCodes, Lack::Refused}};
    const std::string partly = PlainTextOf(MakeReport(found, {}, kNow));
    EXPECT_THAT(partly,
                AllOf(StartsWith("2026-11-22 10:31:07 - ?\n"), Not(HasSubstr("No trouble codes")),
                      HasSubstr("* Pending codes: Refused by the vehicle")));
    found.Missing = {{DiagnosisPart::PermanentCodes, Lack::NotSupported}};
    EXPECT_THAT(PlainTextOf(MakeReport(found, {}, kNow)), HasSubstr("* No trouble codes"));
}

TEST_F(ReportTextTest, LiveValuesAreThoseThatAreKnownNow) {
    const auto sensor = [](std::size_t index, const char* caption, const char* source) {
        basGlobal.Sensors[index].Caption = caption;
        basGlobal.Sensors[index].Source = source;
        basGlobal.Sensors[index].Factor = 1;
    };
    sensor(0, "Speed", "obd_0D");
    sensor(1, "Load", "obd_04");
    basGlobal.SensorCount = 2;
    basGlobal.ConnState = kReceivingData;
    basGlobal.LiveRaw[0x0D] = 87;
    basGlobal.LiveSize[0x0D] = 1;
    basGlobal.LiveAt[0x0D] = HighResTimer();
    const auto live = [this] {
        const std::string text = PlainTextOf(MakeReport(Found(), {}, kNow));
        const std::size_t from = text.find("Live values");
        return text.substr(from, text.find("What is missing") - from);
    };
    EXPECT_THAT(live(), AllOf(HasSubstr("Speed  87\n"), Not(HasSubstr("Load"))));
    basGlobal.ConnState = kNotConnected;
    EXPECT_THAT(live(), AllOf(HasSubstr("Not known"), Not(HasSubstr("87"))));
}

}  // namespace
}  // namespace dravik
