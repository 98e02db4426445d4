#pragma once

#include <string>

#include "core/basGlobal.h"
#include "settings/basSettings.h"
#include "support/TemporaryFolder.h"

namespace dravik {

inline const std::string kLanguageFolder = DRAVIK_LANGUAGES;

constexpr const char* kLanguages[] = {"English", "English (miles)", "German",
                                      "French",  "Spanish",         "Italian"};

/// Loads a language the way the program does at its start: settings, language file, sensor table.
/// @param units  a choice of its own; empty: as the language has them
inline void StartIn(const std::string& name, const std::string& units = "") {
    static const TemporaryFolder folder;
    basGlobal = GlobalState();
    basGlobal.IniFile = folder.Write("Dravik.ini", "[Options]\nUnits=" + units + "\n");
    basGlobal.LanguagePath = kLanguageFolder;
    basGlobal.Launch.Language = name;
    LoadSettings();
}

/// Number of characters of a UTF-8 text.
inline std::size_t Characters(const std::string& text) {
    std::size_t count = 0;
    for (const char byte : text) {
        if ((static_cast<unsigned char>(byte) & 0xC0) != 0x80) ++count;
    }
    return count;
}

}  // namespace dravik
