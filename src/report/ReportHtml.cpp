#include <array>
#include <cstdint>

#include "report/ReportDocument.h"

namespace dravik {

namespace {

/// One column with a table's cells below each other on a phone, A4 on paper.
constexpr const char* kStyle = R"(
*{box-sizing:border-box}
body{margin:0 auto;padding:1.2rem;max-width:58rem;background:#fff;color:#1b1b1b;
font:16px/1.45 "Segoe UI",Roboto,"Helvetica Neue","DejaVu Sans",sans-serif}
h1{font-size:1.7rem;margin:0 0 .3rem}
h2{font-size:1.2rem;margin:1.8rem 0 .5rem;padding-bottom:.2rem;border-bottom:2px solid #1b1b1b}
h3{font-size:1rem;margin:1rem 0 .3rem}
p{margin:.2rem 0}
.about{overflow-wrap:anywhere}
.about:first-of-type{font-size:1.15rem;font-weight:600}
ul{display:flex;flex-wrap:wrap;gap:.6rem;list-style:none;margin:1rem 0 0;padding:0}
li{flex:1 1 12rem;padding:.6rem .8rem;border:1px solid #bbb;border-left-width:.5rem;
font-weight:600}
table{width:100%;border-collapse:collapse}
th,td{padding:.3rem .5rem;border-bottom:1px solid #ddd;text-align:left;vertical-align:top;
overflow-wrap:anywhere}
thead th{background:#f0f0f0}
tbody th{font-weight:400;color:#444;width:50%}
tr>:first-child{border-left:.3rem solid transparent}
dl{display:grid;grid-template-columns:repeat(auto-fill,minmax(16rem,1fr));gap:0 1.2rem;margin:0}
dl div{display:flex;justify-content:space-between;gap:.8rem;padding:.2rem 0;
border-bottom:1px solid #ddd;break-inside:avoid}
dt{color:#444}
dd{flex:none;max-width:60%;margin:0;text-align:right;overflow-wrap:anywhere}
.good,.good>:first-child{border-left-color:#1a7f37!important}
.bad,.bad>:first-child{border-left-color:#c21f1f!important}
.open,.open>:first-child{border-left-color:#b26a00!important}
figure{display:inline-block;width:48%;margin:.5rem 1% .5rem 0;vertical-align:top;break-inside:avoid}
img{width:100%;height:auto}
footer{margin-top:2rem;color:#444;font-size:.85rem}
@media (max-width:36rem){
body{padding:.8rem}
tbody th{width:40%}
figure{width:100%}
.wide thead{display:none}
.wide tr,.wide td{display:block}
.wide tr{padding:.4rem 0;border-bottom:1px solid #bbb}
.wide td{border-bottom:0;padding:.1rem .6rem}
.wide td:not(:first-child)::before{content:attr(data-head) ": ";color:#444}
.wide td:first-child{font-weight:600}
}
@media print{
@page{size:A4;margin:15mm}
body{max-width:none;padding:0;font-size:10pt}
dl{grid-template-columns:repeat(3,1fr)}
h2,h3{break-after:avoid}
tr,li{break-inside:avoid}
thead{display:table-header-group}
*{-webkit-print-color-adjust:exact;print-color-adjust:exact}
}
)";

std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char c : Harmless(text)) {
        switch (c) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            default:
                escaped += c;
        }
    }
    return escaped;
}

std::string Element(const std::string& tag, const std::string& text) {
    return "<" + tag + ">" + Escaped(text) + "</" + tag.substr(0, tag.find(' ')) + ">";
}

std::string Base64(const std::string& bytes) {
    constexpr std::string_view kDigits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    constexpr std::size_t kGroup = 3;
    constexpr unsigned kDigit = 0x3F;
    std::string text;
    text.reserve((bytes.size() + 2) / kGroup * 4);
    for (std::size_t i = 0; i < bytes.size(); i += kGroup) {
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < kGroup; ++k)
            group =
                group << 8 | (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0);
        const std::size_t there = std::min(kGroup, bytes.size() - i);
        for (std::size_t k = 0; k <= kGroup; ++k)
            text += k <= there ? kDigits[group >> (18 - 6 * k) & kDigit] : '=';
    }
    return text;
}

std::string ClassOf(Mark how) {
    constexpr std::array kClasses = {"", " class=\"good\"", " class=\"bad\"", " class=\"open\""};
    return kClasses[static_cast<std::size_t>(how)];
}

std::string RowHtml(const ReportTable& table, const ReportRow& row) {
    std::string html = "<tr" + ClassOf(row.How) + ">";
    for (std::size_t i = 0; i < row.Cells.size(); ++i) {
        if (table.Head.empty())
            html += Element(i == 0 ? "th scope=\"row\"" : "td", row.Cells[i]);
        else
            html += Element("td data-head=\"" + Escaped(table.Head[i]) + "\"", row.Cells[i]);
    }
    return html + "</tr>\n";
}

std::string ValuesHtml(const ReportTable& table) {
    std::string html = "<dl>\n";
    for (const ReportRow& row : table.Rows)
        html += "<div>" + Element("dt", row.Cells.front()) + Element("dd", row.Cells.back()) +
                "</div>\n";
    return html + "</dl>\n";
}

std::string TableHtml(const ReportTable& table) {
    std::string html = table.Title.empty() ? "" : Element("h3", table.Title) + "\n";
    if (table.Narrow) return html + ValuesHtml(table);
    constexpr std::size_t kFitPhone = 3;  // columns
    html += table.Head.size() > kFitPhone ? "<table class=\"wide\">\n" : "<table>\n";
    if (!table.Head.empty()) html += "<thead><tr>";
    for (const std::string& head : table.Head) html += Element("th scope=\"col\"", head);
    if (!table.Head.empty()) html += "</tr></thead>\n";
    html += "<tbody>\n";
    for (const ReportRow& row : table.Rows) html += RowHtml(table, row);
    return html + "</tbody>\n</table>\n";
}

std::string PictureHtml(const ChartPicture& picture) {
    return "<figure><img alt=\"" + Escaped(picture.Caption) + "\" src=\"data:image/png;base64," +
           Base64(picture.Png) + "\"/>" + Element("figcaption", picture.Caption) + "</figure>\n";
}

std::string SectionHtml(const ReportSection& section) {
    std::string html = "<section>\n" + Element("h2", section.Title) + "\n";
    for (const std::string& note : section.Notes) html += Element("p", note) + "\n";
    for (const ReportTable& table : section.Tables) html += TableHtml(table);
    for (const ChartPicture& picture : section.Pictures) html += PictureHtml(picture);
    return html + "</section>\n";
}

}  // namespace

std::string HtmlOf(const ReportDocument& report) {
    std::string html = "<!DOCTYPE html>\n<html lang=\"" + Escaped(report.Language) +
                       "\">\n<head>\n<meta charset=\"utf-8\"/>\n";
    html += Element("title", report.Line) + "\n";
    html += "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>\n<style>";
    html += std::string(kStyle) + "</style>\n</head>\n<body>\n<header>\n";
    html += Element("h1", report.Title) + "\n";
    for (const std::string& line : report.About) html += Element("p class=\"about\"", line) + "\n";
    html += "<ul>\n";
    for (const ReportRow& verdict : report.Verdicts)
        html += "<li" + ClassOf(verdict.How) + ">" + Escaped(verdict.Cells.front()) + "</li>\n";
    html += "</ul>\n</header>\n<main>\n";
    for (const ReportSection& section : report.Sections) html += SectionHtml(section);
    return html + "</main>\n" + Element("footer", report.Foot) + "\n</body>\n</html>\n";
}

}  // namespace dravik
