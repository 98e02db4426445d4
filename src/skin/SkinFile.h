#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/basSettings.h"
#include "skin/SkinVocabulary.h"

/// Reading the current skin file by its reading rules.
namespace dravik {

/// Whether the current skin file has a section of that name.
bool HasSkinSection(const std::string& name);

/// An integer key: leading decimal digits, else 0.
int ReadSkinInteger(const std::string& section, const std::string& key);

/// The key of an element: "Button" 0 "Function" gives "Button0Function".
std::string ElementKey(const SkinKind& kind, int number, std::string_view property);

/// A fault of one key of an element.
SkinError ElementError(const SkinElement& element, const char* key, std::string description);

/// Which of an element's keys are read: a page leaves some for the deferred pass, a box does not.
enum class KeySet { First, Deferred, All };

/// Reads the keys of one element. The first value that does not convert ends it.
/// @return the fault; nothing when all is well
std::optional<SkinError> ReadElement(SkinElement& element, KeySet keys);

/// Reads the keys of a section that have a field: those of that number or, without one, those that
/// have no number. A number that does not fit is read as 0.
SkinElement ReadSectionKeys(const std::string& section, std::span<const SectionKey> keys,
                            std::optional<int> number = std::nullopt);

/// The sections that make up a page, in loading order: its CommonObjects, then itself.
std::vector<std::string> PageSections(const std::string& page);

/// Loads the fonts that come with the program and those of the current skin: every font file in the
/// folder `fonts` of the program folder, of the installed data and of the skin's image folder. What
/// was loaded before stays.
void LoadSkinFonts();

/// Full path of a picture of the skin; empty for an empty name.
std::string PicturePath(const std::string& name);

}  // namespace dravik
