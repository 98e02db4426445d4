#include <algorithm>
#include <array>
#include <set>

#include "core/basGlobal.h"
#include "platform/Number.h"
#include "platform/Paths.h"
#include "platform/Profile.h"
#include "platform/Text.h"
#include "skin/basSkin.h"
#include "skin/check/CheckSkinParts.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

using std::string;
using std::string_view;

/// A value as it stands in the file, however long.
string WholeValue(const string& section, const string& key) {
    constexpr std::size_t kAnyLength = 1 << 16;
    return ReadProfileString(basGlobal.SkinFile, section, key, "", kAnyLength);
}

/// Digits without leading zeros, as the loader writes them.
std::optional<int> PlainNumber(string_view digits) {
    const bool leadingZero = digits.size() > 1 && digits.starts_with('0');
    if (digits.size() > 9 || leadingZero || digits.starts_with('-')) return std::nullopt;
    return WholeNumber(digits);
}

/// An element's key taken apart.
struct ElementKeyName {
    const SkinKind* Kind = nullptr;  ///< null: the key belongs to no element
    int Number = 0;
    string_view Property;
};

ElementKeyName TakeApart(string_view key) {
    for (const SkinKind* kind : SkinKinds()) {
        const string_view word = kind->Word;
        if (!EqualsNoCase(key.substr(0, word.size()), word)) continue;
        const string_view rest = key.substr(word.size());
        const std::size_t end = std::min(rest.find_first_not_of("0123456789"), rest.size());
        const auto number = PlainNumber(rest.substr(0, end));
        if (number) return {kind, *number, rest.substr(end)};
    }
    return {};
}

std::vector<string> PropertiesOf(const SkinKind& kind) {
    std::vector<string> names = {"Function"};
    for (const SkinKey& key : kind.Keys) names.emplace_back(key.Name);
    return names;
}

bool IsAmong(string_view name, const std::vector<string>& names) {
    return std::any_of(names.begin(), names.end(),
                       [name](const string& other) { return EqualsNoCase(name, other); });
}

/// The row of a key that stands in the file; null when there is none.
const SectionKey* FindKey(std::span<const SectionKey> rows, string_view key) {
    for (const SectionKey& row : rows) {
        const auto number = NumberInKey(row.Name, key);
        if (number && *number <= row.Last) return &row;
    }
    return nullptr;
}

/// The row that the key would belong to if its number were smaller; null when there is none.
const SectionKey* FindEndedRow(std::span<const SectionKey> rows, string_view key) {
    if (FindKey(rows, key) != nullptr) return nullptr;
    const auto row = std::find_if(rows.begin(), rows.end(), [key](const SectionKey& each) {
        return NumberInKey(each.Name, key).has_value();
    });
    return row == rows.end() ? nullptr : &*row;
}

/// What is wrong with a key that has no row: its number, or its name.
string UnknownKey(std::span<const SectionKey> rows, const string& key, const string& what) {
    if (const SectionKey* row = FindEndedRow(rows, key))
        return "is not read: the numbers end at " + std::to_string(row->Last);
    // Numbered rows take part with the number that the key has.
    constexpr const char* kDigits = "0123456789";
    const std::size_t from = std::min(key.find_first_of(kDigits), key.size());
    const string number = key.substr(from, key.find_first_not_of(kDigits, from) - from);
    std::vector<string> names;
    for (const SectionKey& row : rows) {
        const string name = ReplaceAll(row.Name, "#", number.empty() ? "0" : number);
        if (FindKey(rows, name) != nullptr) names.push_back(name);
    }
    return what + DidYouMean(key, names);
}

bool IsInteger(string_view text) {
    text = WithoutPlus(Trimmed(text));
    return text.empty() || WholeNumber(text);
}

using Places = std::map<string, std::size_t>;  ///< by the name in lower case

/// Where each name stands first.
Places PlacesOf(const std::vector<string>& names) {
    Places places;
    for (std::size_t i = 0; i < names.size(); ++i) places.try_emplace(LowerCased(names[i]), i);
    return places;
}

/// A name that is not there comes after all that are.
std::size_t PlaceOf(const Places& places, const string& name) {
    const auto found = places.find(LowerCased(name));
    return found == places.end() ? places.size() : found->second;
}

}  // namespace

std::optional<int> NumberInKey(string_view name, string_view key) {
    const std::size_t place = name.find('#');
    const string_view front = name.substr(0, place);
    const string_view back = place == string_view::npos ? string_view{} : name.substr(place + 1);
    if (place == string_view::npos)
        return EqualsNoCase(name, key) ? std::optional(0) : std::nullopt;
    if (key.size() < front.size() + back.size() ||
        !EqualsNoCase(key.substr(0, front.size()), front) ||
        !EqualsNoCase(key.substr(key.size() - back.size()), back))
        return std::nullopt;
    return PlainNumber(key.substr(front.size(), key.size() - front.size() - back.size()));
}

void SkinFindings::Add(const string& section, const string& key, const string& text) {
    findings_.push_back({basGlobal.SkinFile, section, key, text});
}

std::vector<SkinError> SkinFindings::Sorted() const {
    // Sections in the order of the file, keys in the order of their section; what has no key first.
    // What stands before the first section comes first of all.
    std::vector<string> names = ProfileSections(basGlobal.SkinFile);
    names.insert(names.begin(), string{});
    const Places sections = PlacesOf(names);
    struct Placed {
        std::size_t Section;
        std::size_t Key;  ///< counted from 1; 0: none
        const SkinError* Finding;
    };
    std::map<string, Places> keys;
    std::vector<Placed> placed;
    for (const SkinError& finding : findings_) {
        auto [known, added] = keys.try_emplace(finding.Section);
        if (added) known->second = PlacesOf(ProfileKeys(basGlobal.SkinFile, finding.Section));
        placed.push_back({PlaceOf(sections, finding.Section),
                          finding.Key.empty() ? 0 : 1 + PlaceOf(known->second, finding.Key),
                          &finding});
    }
    std::stable_sort(placed.begin(), placed.end(), [](const Placed& a, const Placed& b) {
        return std::pair(a.Section, a.Key) < std::pair(b.Section, b.Key);
    });
    std::vector<SkinError> sorted;
    for (const Placed& entry : placed) sorted.push_back(*entry.Finding);
    return sorted;
}

void SkinFindings::CheckNumber(const string& section, const string& key, Read how) {
    const string text = ReadSkinValue(section, key);
    const string readAs = "\"" + text + "\" is read as ";
    if (how == Read::Integer) {
        if (!IsInteger(text))
            Add(section, key,
                readAs + std::to_string(ReadSkinInteger(section, key)) +
                    "; a whole number is wanted");
    } else if (how == Read::Strict) {
        if (text.empty())
            Add(section, key, "a number is required");
        else if (!StrictNumber(text))
            Add(section, key, "\"" + text + "\" is not a number");
    } else if (how == Read::Short && LenientNumber(text) && !ShortNumber(text)) {
        Add(section, key, "the number \"" + text + "\" is not within -32768 to 32767");
    } else if (!text.empty() && !StrictNumber(text)) {
        const auto number = LenientNumber(text);
        Add(section, key,
            number ? readAs + std::to_string(*number) + "; a number such as 12 or &HFF is wanted"
                   : "the number \"" + text + "\" does not fit into 32 bits");
    }
}

const SkinFindings::PicturePair& SkinFindings::FactsOfPicture(const string& name) {
    const string path = PicturePath(name);
    auto [known, added] = pictures_.try_emplace(path);
    if (added) known->second = {InspectPicture(path), InspectDoublePicture(path)};
    return known->second;
}

void SkinFindings::CheckPicture(const string& section, const string& key) {
    const string name = ReadSkinValue(section, key);
    // A missing folder is one mistake, not one per picture.
    if (name.empty() || !FolderExists(basGlobal.ImageFolder)) return;
    const auto& [plain, twice] = FactsOfPicture(name);
    if (!plain.Fault.empty())
        Add(section, key, name + ": " + plain.Fault);
    else if (!twice.Fault.empty())
        Add(section, key, "the picture of double size of " + name + ": " + twice.Fault);
    else if (twice.Width > 0 &&
             (twice.Width != 2 * plain.Width || twice.Height != 2 * plain.Height))
        Add(section, key, "the picture of double size of " + name + " is not twice as large");
}

void SkinFindings::CheckValue(const string& section, const string& key, Read how) {
    const string whole = WholeValue(section, key);
    if (whole.size() > kSkinValueBytes)
        Add(section, key,
            "longer than " + std::to_string(kSkinValueBytes) + " bytes, cut to \"" +
                ReadSkinValue(section, key) + "\"");
    else if (how == Read::Picture)
        CheckPicture(section, key);
    else if (how == Read::Font)
        CheckFont(section, key);
    else if (how != Read::Text)
        CheckNumber(section, key, how);
}

FunctionVerdict SkinFindings::CheckRole(const string& section, const string& key,
                                        const FunctionRole& role) {
    const string text = ReadSkinValue(section, key);
    if (text.empty()) return {};
    FunctionVerdict verdict = CheckFunction(role, text);
    if (!verdict.Fault.empty()) Add(section, key, verdict.Fault);
    if (!verdict.WordName.empty()) CheckWord(section, key, verdict.WordName);
    if (verdict.Element) {
        verdict.Element->Section = section;
        verdict.Element->Key = key;
    }
    for (Opening& opening : verdict.Openings) {
        opening.Section = section;
        opening.Key = key;
    }
    return verdict;
}

/// Told once for each text and language, however often the skin shows it. A language without any
/// words is told as such.
void SkinFindings::CheckWord(const string& section, const string& key, const string& name) {
    if (languages_.empty()) {
        for (const string& language : LanguageNames()) {
            const auto& words =
                languages_.emplace(language, WordList(LanguageFileOf(language))).first->second;
            if (words.Empty()) Add(section, key, language + ".ini has no section Words");
        }
    }
    if (!words_.insert(LowerCased(name)).second) return;
    for (const auto& [language, words] : languages_) {
        if (!words.Empty() && !words.Find(name))
            Add(section, key, language + ".ini lacks the word \"" + name + "\"");
    }
}

void SkinFindings::Note(SectionFacts& facts, const FunctionVerdict& verdict, const string& key) {
    facts.Openings.insert(facts.Openings.end(), verdict.Openings.begin(), verdict.Openings.end());
    if (verdict.Element) facts.Named.push_back(*verdict.Element);
    if (verdict.Word != "openmenu") return;
    if (verdict.Fixed == "+") facts.NextMenuKey = key;
    if (verdict.Fixed == "-") facts.MenuBeforeKey = key;
}

void SkinFindings::CheckRepeats(const string& section) {
    std::set<string> seen, reported;
    for (const string& key : ProfileKeys(basGlobal.SkinFile, section)) {
        const string name = LowerCased(key);
        if (!seen.insert(name).second && reported.insert(name).second)
            Add(section, key, "stands there more than once; the first one counts");
    }
}

int CountOf(const KindCounts& counts, const SkinKind* kind) {
    const auto found = counts.find(kind);
    return found == counts.end() ? 0 : found->second;
}

SectionFacts SkinFindings::CheckPageSection(const string& section) {
    SectionFacts facts;
    for (const SkinKind* kind : SkinKinds()) {
        int& count = facts.Counts[kind];
        for (; count <= kLastElement; ++count) {
            SkinElement element;
            element.Kind = kind;
            element.Section = section;
            element.Number = count;
            element.Function = ReadSkinValue(section, ElementKey(*kind, count, "Function"));
            if (element.Function.empty()) break;
            CheckElement(element, facts);
        }
    }
    for (const SectionKey& key : PageKeys()) {
        if (key.Role == nullptr) continue;
        FunctionVerdict verdict = CheckRole(section, key.Name, *key.Role);
        verdict.Element.reset();  // it runs while the page before is still there
        Note(facts, verdict, key.Name);
    }
    CheckSectionKeys(section, PageKeys());
    CheckUnknownKeys(section, facts);
    return facts;
}

void SkinFindings::CheckElement(const SkinElement& element, SectionFacts& facts) {
    const SkinKind& kind = *element.Kind;
    const string& section = element.Section;
    const string function = ElementKey(kind, element.Number, "Function");
    CheckValue(section, function, Read::Text);
    Note(facts, CheckRole(section, function, *kind.Role), function);
    if (element.Kind == &kButtonKind) facts.LeavesBox |= LeavesBox(element.Function);
    for (const SkinKey& key : kind.Keys) {
        const string name = ElementKey(kind, element.Number, key.Name);
        CheckValue(section, name, key.How);
        if (key.Role != nullptr) Note(facts, CheckRole(section, name, *key.Role), name);
    }
    SkinElement read = element;
    if (ReadElement(read, KeySet::All)) return;
    CheckSense(read);
    CheckPlace(read);
    CheckText(read);
}

void SkinFindings::CheckSectionKeys(const string& section, std::span<const SectionKey> keys) {
    CheckRepeats(section);
    for (const string& name : ProfileKeys(basGlobal.SkinFile, section)) {
        if (const SectionKey* row = FindKey(keys, name)) CheckValue(section, name, row->How);
    }
    // A list of numbered keys ends at the first that is missing.
    for (const SectionKey& key : keys) {
        const string name = key.Name;
        if (!name.ends_with('#')) continue;
        const string front = name.substr(0, name.size() - 1);
        int missing = -1;
        for (int n = 0; n <= key.Last; ++n) {
            const bool there = !ReadSkinValue(section, front + std::to_string(n)).empty();
            if (!there && missing < 0) missing = n;
            if (there && missing >= 0) {
                Add(section, front + std::to_string(n),
                    "is never read: " + front + std::to_string(missing) + " is missing");
                break;
            }
        }
    }
}

void SkinFindings::CheckUnknownKeys(const string& section, const SectionFacts& facts) {
    std::set<std::pair<const SkinKind*, int>> reported;
    for (const string& name : ProfileKeys(basGlobal.SkinFile, section)) {
        const ElementKeyName key = TakeApart(name);
        if (key.Kind == nullptr) {
            if (FindKey(PageKeys(), name) == nullptr)
                Add(section, name,
                    UnknownKey(PageKeys(), name, "no page or element has such a key"));
            continue;
        }
        const auto properties = PropertiesOf(*key.Kind);
        if (!IsAmong(key.Property, properties)) {
            Add(section, name,
                "a " + string(key.Kind->Word) + " has no such key" +
                    DidYouMean(key.Property, properties));
            continue;
        }
        const int count = CountOf(facts.Counts, key.Kind);
        if (key.Number < count || !reported.insert({key.Kind, key.Number}).second) continue;
        const string own = ElementKey(*key.Kind, key.Number, "Function");
        if (key.Number > kLastElement)
            Add(section, name, "is not read: the numbers end at " + std::to_string(kLastElement));
        else if (ReadSkinValue(section, own).empty())
            Add(section, name, "there is no such element: " + own + " is missing");
        else
            Add(section, name,
                "is never read: " + ElementKey(*key.Kind, count, "Function") + " is missing");
    }
}

void SkinFindings::CheckGeneral() {
    constexpr const char* kGeneral = "General";
    CheckSectionKeys(kGeneral, GeneralKeys());
    for (const string& name : ProfileKeys(basGlobal.SkinFile, kGeneral)) {
        if (FindKey(GeneralKeys(), name) == nullptr)
            Add(kGeneral, name, UnknownKey(GeneralKeys(), name, "the section has no such key"));
    }
    if (ReadSkinValue(kGeneral, "Imagefolder").empty())
        Add(kGeneral, "Imagefolder", "is missing: no picture is found without it");
    else if (!FolderExists(basGlobal.ImageFolder))
        Add(kGeneral, "Imagefolder", "there is no such folder: " + basGlobal.ImageFolder);
    if ((ReadSkinInteger(kGeneral, "Width") > 0) != (ReadSkinInteger(kGeneral, "Height") > 0))
        Add(kGeneral, "Width", "counts together with Height only");
}

void SkinFindings::CheckMessage(const string& section) {
    struct NeededAnswer {
        const char* Section;
        const char* Answer;
    };
    constexpr NeededAnswer kNeededAnswers[] = {
        {"warning", "ok"}, {"info", "ok"}, {"query", "yes"}, {"query", "no"}};
    CheckSectionKeys(section, MessageKeys());
    std::set<string> answers;
    for (const string& name : ProfileKeys(basGlobal.SkinFile, section)) {
        const SectionKey* row = FindKey(MessageKeys(), name);
        if (const SectionKey* button = FindEndedRow(MessageKeys(), name))
            Add(section, name,
                "a message box has at most " + std::to_string(button->Last + 1) + " buttons");
        else if (row == nullptr)
            Add(section, name, UnknownKey(MessageKeys(), name, "a message box has no such key"));
        if (row == nullptr || row->Role == nullptr) continue;
        CheckRole(section, name, *row->Role);
        if (row->Role != &kAnswerRole) continue;
        answers.insert(LowerCased(ReadSkinValue(section, name)));
        const string picture = ReplaceAll(row->Name, "#Function", "#Up");
        const string up = ReplaceAll(picture, "#", std::to_string(*NumberInKey(row->Name, name)));
        if (ReadSkinValue(section, up).empty())
            Add(section, up, "without this picture the button has no size");
    }
    for (const NeededAnswer& needed : kNeededAnswers) {
        if (EqualsNoCase(section, needed.Section) && !answers.contains(needed.Answer))
            Add(section, "Button0Function", "no button answers \"" + string(needed.Answer) + "\"");
    }
    SkinElement label;
    label.Kind = &kLabelKind;
    label.Section = section;
    label.Alignment = ReadSkinInteger(section, "Label0Alignment");
    label.FontSize = ReadSkinInteger(section, "Label0FontSize");
    CheckRanges(label);
}

}  // namespace dravik
