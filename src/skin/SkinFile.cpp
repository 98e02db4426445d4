#include "skin/SkinFile.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "controls/FontFiles.h"
#include "core/basGlobal.h"
#include "platform/Paths.h"
#include "platform/Profile.h"
#include "platform/Text.h"

namespace dravik {

namespace {

constexpr std::string_view kHexMark = "&H";

bool HasHexMark(std::string_view text) {
    return text.size() >= kHexMark.size() &&
           EqualsNoCase(text.substr(0, kHexMark.size()), kHexMark);
}

/// The hexadecimal digits at the front of a text as a 32-bit pattern; `used` tells how many.
std::optional<std::int32_t> LeadingHex(std::string_view digits, std::size_t& used) {
    std::uint32_t value = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    used = static_cast<std::size_t>(end - digits.data());
    if (error == std::errc::result_out_of_range) return std::nullopt;
    return static_cast<std::int32_t>(value);
}

std::optional<std::int32_t> ToInteger(double number) {
    const double rounded = std::nearbyint(number);
    if (!(rounded >= std::numeric_limits<std::int32_t>::min() &&
          rounded <= std::numeric_limits<std::int32_t>::max()))
        return std::nullopt;
    return static_cast<std::int32_t>(rounded);
}

struct ReadValue {
    const SkinKey& Key;
    const std::string& Section;
    const std::string& Name;
};

/// Reads a number by the rule of its key; nothing when it does not convert.
std::optional<int> ReadNumber(const ReadValue& value) {
    if (value.Key.How == Read::Integer) return ReadSkinInteger(value.Section, value.Name);
    const std::string text = ReadSkinValue(value.Section, value.Name);
    if (value.Key.How == Read::Strict) return StrictNumber(text);
    return value.Key.How == Read::Short ? ShortNumber(text) : LenientNumber(text);
}

std::string NotANumber(const ReadValue& value) {
    const std::string text = ReadSkinValue(value.Section, value.Name);
    if (text.empty()) return "a number is required";
    return "not a number that fits: \"" + text + "\"";
}

}  // namespace

std::string SkinError::Context() const {
    const std::size_t separator = File.find_last_of("\\/");
    return File.substr(separator == std::string::npos ? 0 : separator + 1) +
           (Section.empty() ? "" : " [" + Section + "]") + (Key.empty() ? "" : " " + Key);
}

bool HasSkinSection(const std::string& name) {
    const std::vector<std::string> sections = ProfileSections(basGlobal.SkinFile);
    return std::any_of(sections.begin(), sections.end(),
                       [&name](const std::string& section) { return EqualsNoCase(section, name); });
}

int ReadSkinInteger(const std::string& section, const std::string& key) {
    return ReadProfileInt(basGlobal.SkinFile, section, key, 0);
}

std::optional<std::int32_t> LenientNumber(std::string_view text) {
    text = Trimmed(text);
    if (HasHexMark(text)) {
        std::size_t used = 0;
        return LeadingHex(text.substr(kHexMark.size()), used);
    }
    return ToInteger(LeadingNumber(text));
}

std::optional<std::int32_t> ShortNumber(std::string_view text) {
    const std::optional<std::int32_t> number = LenientNumber(text);
    if (!number || *number != static_cast<std::int16_t>(*number)) return std::nullopt;
    return number;
}

std::optional<std::int32_t> StrictNumber(std::string_view text) {
    text = Trimmed(text);
    if (HasHexMark(text)) {
        std::string_view digits = text.substr(kHexMark.size());
        if (digits.ends_with('&')) digits.remove_suffix(1);  // marks the number as a long one
        std::size_t used = 0;
        const auto number = LeadingHex(digits, used);
        return !digits.empty() && used == digits.size() ? number : std::nullopt;
    }
    text = WithoutPlus(text);
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (text.empty() || error != std::errc{} || end != text.data() + text.size())
        return std::nullopt;
    return ToInteger(number);
}

std::string ElementKey(const SkinKind& kind, int number, std::string_view property) {
    return (kind.Word + std::to_string(number)).append(property);
}

SkinError ElementError(const SkinElement& element, const char* key, std::string description) {
    return {basGlobal.SkinFile, element.Section, ElementKey(*element.Kind, element.Number, key),
            std::move(description)};
}

std::optional<SkinError> ReadElement(SkinElement& element, KeySet keys) {
    const SkinKind& kind = *element.Kind;
    for (const SkinKey& key : kind.Keys) {
        if (keys != KeySet::All && key.Deferred != (keys == KeySet::Deferred)) continue;
        const std::string name = ElementKey(kind, element.Number, key.Name);
        if (const auto* text = std::get_if<std::string SkinElement::*>(&key.Field)) {
            element.** text = ReadSkinValue(element.Section, name);
            continue;
        }
        const ReadValue value{key, element.Section, name};
        const std::optional<int> number = ReadNumber(value);
        if (!number) return SkinError{basGlobal.SkinFile, element.Section, name, NotANumber(value)};
        element.*std::get<int SkinElement::*>(key.Field) = *number;
    }
    return std::nullopt;
}

std::vector<std::string> PageSections(const std::string& page) {
    std::vector<std::string> sections;
    for (int j = 0; j <= kLastCommonObject; ++j) {
        std::string shared = ReadSkinValue(page, "CommonObjects" + std::to_string(j));
        if (shared.empty()) break;
        sections.push_back(std::move(shared));
    }
    // The page's own section comes last; a page with a full set of 101 shared sections has no pass
    // left for it.
    if (sections.size() <= kLastCommonObject) sections.push_back(page);
    return sections;
}

void LoadSkinFonts() {
    const GlobalState& g = basGlobal;
    for (const std::string& folder : {g.ProgramFolder, g.Launch.InstalledFonts, g.ImageFolder}) {
        if (!folder.empty()) LoadFontFiles(JoinPath(folder, "fonts"));
    }
}

std::string PicturePath(const std::string& name) {
    return name.empty() ? name : basGlobal.ImageFolder + name;
}

}  // namespace dravik
