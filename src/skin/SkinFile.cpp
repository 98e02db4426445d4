#include "skin/SkinFile.h"

#include <algorithm>

#include "controls/FontFiles.h"
#include "core/DataFiles.h"
#include "core/basGlobal.h"
#include "platform/Number.h"
#include "platform/Paths.h"
#include "platform/Profile.h"
#include "platform/Text.h"

namespace dravik {

namespace {

struct ReadValue {
    Read How;
    const std::string& Section;
    const std::string& Name;
};

/// Reads a number by the rule of its key; nothing when it does not convert.
std::optional<int> ReadNumber(const ReadValue& value) {
    if (value.How == Read::Integer) return ReadSkinInteger(value.Section, value.Name);
    const std::string text = ReadSkinValue(value.Section, value.Name);
    if (value.How == Read::Strict) return StrictNumber(text);
    return value.How == Read::Short ? ShortNumber(text) : LenientNumber(text);
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
        const ReadValue value{key.How, element.Section, name};
        const std::optional<int> number = ReadNumber(value);
        if (!number) return SkinError{basGlobal.SkinFile, element.Section, name, NotANumber(value)};
        element.*std::get<int SkinElement::*>(key.Field) = *number;
    }
    return std::nullopt;
}

SkinElement ReadSectionKeys(const std::string& section, std::span<const SectionKey> keys,
                            std::optional<int> number) {
    SkinElement element;
    for (const SectionKey& key : keys) {
        std::string name = key.Name;
        const std::size_t place = name.find('#');
        if (number.has_value() != (place != std::string::npos)) continue;
        if (number) name.replace(place, 1, std::to_string(*number));
        if (const auto* text = std::get_if<std::string SkinElement::*>(&key.Field))
            element.** text = ReadSkinValue(section, name);
        else if (const auto* integer = std::get_if<int SkinElement::*>(&key.Field))
            element.** integer = ReadNumber({key.How, section, name}).value_or(0);
    }
    return element;
}

std::vector<std::string> PageSections(const std::string& page) {
    std::vector<std::string> sections;
    for (int j = 0; j <= kLastCommonObject; ++j) {
        std::string shared = ReadSectionKeys(page, PageKeys(), j).Section;
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
    std::vector<std::string> folders = {g.ProgramFolder, g.Launch.InstalledData};
    for (std::string& place : PlacesOf(OwnFile(g.ImageFolder))) folders.push_back(std::move(place));
    for (const std::string& folder : folders) {
        if (!folder.empty()) LoadFontFiles(JoinPath(folder, "fonts"));
    }
}

std::string PicturePath(const std::string& name) {
    return name.empty() ? name : basGlobal.ImageFolder + name;
}

}  // namespace dravik
