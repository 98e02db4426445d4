#include "core/basGlobal.h"
#include "platform/Paths.h"
#include "platform/ProfileEncoding.h"
#include "platform/ProfileLine.h"
#include "platform/Text.h"
#include "skin/check/CheckSkinParts.h"

namespace dravik {

using std::string;
using std::string_view;

namespace {

/// Why a line is passed over that is meant to say something; empty for a comment.
string LineFault(string_view line) {
    const string_view text = Trimmed(line);
    if (text.empty() || text.front() == ';') return {};
    const string quoted = "\"" + string(CutBytes(text, kSkinValueBytes)) + "\"";
    if (text.front() == '[') return "the line " + quoted + " is no section: the \"]\" is missing";
    if (text.front() == '=') return "the line " + quoted + " has no key in front of the \"=\"";
    return "the line " + quoted + " is no key: it has no \"=\"; a comment begins with \";\"";
}

}  // namespace

/// Lines that the reading of the file passes over.
void SkinFindings::CheckLines() {
    const string text = DecodeProfile(ReadWholeFile(basGlobal.SkinFile).value_or(""));
    string_view rest = text;
    rest.remove_prefix(ProfileByteOrderMark(rest).size());
    string section;
    bool inSection = false;
    bool told = false;
    while (!rest.empty()) {
        string_view line = TakeProfileLine(rest);
        line.remove_suffix(ProfileLineEnd(line).size());
        const ProfileLine parsed = ParseProfileLine(line);
        if (parsed.Kind == ProfileLineKind::Section) {
            section = parsed.Name;
            inSection = true;
        } else if (parsed.Kind == ProfileLineKind::Other) {
            if (const string fault = LineFault(line); !fault.empty()) Add(section, "", fault);
        } else if (parsed.Kind == ProfileLineKind::Entry && !inSection && !told) {
            Add("", string(parsed.Name), "is not read: it stands before the first section");
            told = true;
        }
    }
}

}  // namespace dravik
