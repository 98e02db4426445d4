#include <gmock/gmock.h>

#include <cstdio>
#include <filesystem>
#include <set>

#include "languages/LanguageFolder.h"
#include "platform/Profile.h"
#include "platform/Text.h"

namespace dravik {
namespace {

using ::testing::HasSubstr;

constexpr const char* kSection = "errorcodes";
constexpr std::size_t kLongestDescription = 63;  // characters

constexpr const char* kCodeFiles[] = {"english.codes", "german.codes", "french.codes",
                                      "spanish.codes", "italian.codes"};

std::string Description(const std::string& file, const std::string& code) {
    return ReadIniString(kLanguageFolder + file, kSection, code);
}

std::string Code(char letter, int number) {
    char text[8];
    std::snprintf(text, sizeof text, "%c%04d", letter, number);
    return text;
}

TEST(CodeFiles, AreNamedByTheLanguagesOfTheFolderAndNothingElseLiesThere) {
    struct Language {
        const char* Name;
        const char* Codes;
        const char* Locales;
    };
    constexpr Language kExpected[] = {
        {"English", "english.codes", "en"}, {"English (miles)", "english.codes", "en_US,en_GB"},
        {"German", "german.codes", "de"},   {"French", "french.codes", "fr"},
        {"Spanish", "spanish.codes", "es"}, {"Italian", "italian.codes", "it"}};
    std::set<std::string> named;
    for (const Language& language : kExpected) {
        StartIn(language.Name);
        EXPECT_EQ(basGlobal.DescriptionFile, kLanguageFolder + language.Codes);
        EXPECT_EQ(ReadIniString(basGlobal.LanguageFile, "General", "Locales"), language.Locales);
        named.insert({basGlobal.LanguageFile, basGlobal.DescriptionFile});
        for (const char* units : {kMetric, kImperial}) {
            StartIn(language.Name, units);
            EXPECT_EQ(CurrentUnits(), units) << language.Name;
            named.insert(basGlobal.SensorFile);
        }
    }
    std::set<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(kLanguageFolder)) {
        if (entry.is_regular_file()) found.insert(entry.path().generic_string());
    }
    EXPECT_EQ(found, named);
}

TEST(CodeFiles, EveryLanguageKnowsTheSameCodes) {
    const auto english = ProfileKeys(kLanguageFolder + kCodeFiles[0], kSection);
    EXPECT_EQ(std::set<std::string>(english.begin(), english.end()).size(), english.size());
    for (const std::string file : kCodeFiles)
        EXPECT_EQ(ProfileKeys(kLanguageFolder + file, kSection), english) << file;
}

TEST(CodeFiles, KnowEveryDefinedCodeFromP0000ToP0999) {
    const std::set<int> reserved = {364, 395, 396, 397, 398, 399};
    for (const std::string file : kCodeFiles) {
        for (int number = 0; number <= 999; ++number)
            EXPECT_EQ(Description(file, Code('P', number)) == "0", reserved.contains(number))
                << file << ' ' << Code('P', number);
    }
}

TEST(CodeFiles, KnowTheRunsOfTheOtherSystems) {
    struct Run {
        char Letter;
        int First;
        int Last;
    };
    constexpr Run kRuns[] = {
        {'P', 2000, 2079}, {'P', 2100, 2299}, {'P', 2300, 2347}, {'P', 2400, 2463},
        {'P', 2500, 2582}, {'P', 2600, 2671}, {'P', 2700, 2795}, {'P', 2800, 2824},
        {'P', 3400, 3497}, {'B', 1, 5},       {'B', 10, 13},     {'B', 20, 22},
        {'C', 30, 39},     {'C', 61, 64},     {'U', 1, 75},      {'U', 100, 115},
        {'U', 121, 133},   {'U', 140, 236},   {'U', 300, 331},   {'U', 400, 432},
    };
    for (const Run& run : kRuns) {
        for (int number = run.First; number <= run.Last; ++number)
            EXPECT_NE(Description(kCodeFiles[0], Code(run.Letter, number)), "0")
                << Code(run.Letter, number);
    }
}

TEST(CodeFiles, DescribeEachCodeInTheirOwnLanguageAndBriefly) {
    for (const std::string file : kCodeFiles) {
        const bool english = file == kCodeFiles[0];
        for (const std::string& code : ProfileKeys(kLanguageFolder + file, kSection)) {
            SCOPED_TRACE(file + ' ' + code);
            // The list asks with the code as the link decodes it, capital letters included.
            ASSERT_EQ(code.size(), 5U);
            EXPECT_NE(std::string("PCBU").find(code[0]), std::string::npos);
            EXPECT_EQ(code.find_first_not_of("0123456789ABCDEF", 1), std::string::npos);
            const std::string text = Description(file, code);
            EXPECT_TRUE(IsUtf8(text)) << text;
            EXPECT_LE(Characters(text), kLongestDescription) << text;
            EXPECT_GE(Characters(text), 8U) << text;
            EXPECT_EQ(text.find_first_of("{}@#|"), std::string::npos) << text;
            EXPECT_EQ(text.find("  "), std::string::npos) << text;
            EXPECT_NE(text.back(), '.') << "the list closes the line itself";
            if (!english) {
                EXPECT_NE(text, Description(kCodeFiles[0], code));
            }
        }
    }
}

struct Meaning {
    const char* Code;
    const char* Words[5];  // part of the description, in the order of kCodeFiles
};

// Codes at the ends of series and of long runs: one row too many or too few in a table would shift
// what stands behind them. What they mean is written here anew.
// clang-format off
constexpr Meaning kMeanings[] = {
    {"P0175", {"bank 2 too rich", "Bank 2 zu fett", "banc 2 trop riche", "banco 2 demasiado rica", "bancata 2 troppo ricca"}},
    {"P0229", {"pedal sensor C, intermittent", "Pedalgeber C, Signal setzt aus", "pédale C, signal intermittent", "pedal C, señal intermitente", "pedale C, segnale intermittente"}},
    {"P02B9", {"Cylinder 8, injector leaking", "Zylinder 8, Einspritzventil undicht", "Cylindre 8, injecteur non étanche", "Cilindro 8, inyector con fuga", "Cilindro 8, perdita dell'iniettore"}},
    {"P0362", {"Ignition coil L", "Zündspule L", "Bobine d'allumage L", "Bobina de encendido L", "Bobina di accensione L"}},
    {"P0394", {"Camshaft sensor B bank 2, intermittent", "Nockenwellensensor B Bank 2", "cames B banc 2", "levas B banco 2", "camme B bancata 2"}},
    {"P0499", {"vent control, voltage too high", "Belüftung, Spannung zu hoch", "canister, tension trop élevée", "cánister, tensión demasiado alta", "canister, tensione troppo alta"}},
    {"P0665", {"Manifold tuning valve bank 2, voltage too high", "Schaltsaugrohrventil Bank 2", "variable banc 2", "variable banco 2", "variabile bancata 2"}},
    {"P0699", {"Sensor supply C, voltage too high", "Sensorversorgung C, Spannung zu hoch", "capteurs C, tension", "sensores C, tensión", "sensori C, tensione troppo alta"}},
    {"P0799", {"Pressure control solenoid C, intermittent", "Druckregelventil C, sporadischer", "pression C, défaut intermittent", "presión C, fallo intermitente", "pressione C, guasto intermittente"}},
    {"P0879", {"pressure sensor D, intermittent", "drucksensor D, Signal setzt aus", "boîte D, signal intermittent", "cambio D, señal intermitente", "cambio D, segnale intermittente"}},
    {"P0999", {"Shift solenoid F, voltage too high", "Schaltventil F, Spannung zu hoch", "passage F, tension trop élevée", "cambio F, tensión demasiado alta", "cambiata F, tensione troppo alta"}},
    {"P2087", {"Exhaust temperature sensor 2 bank 2, intermittent", "Abgastemperatursensor 2 Bank 2", "échappement 2 banc 2", "escape 2 banco 2", "scarico 2 bancata 2"}},
    {"P2239", {"O2 sensor 1 bank 1 pump current, voltage too high", "Pumpstrom Lambdasonde 1 Bank 1", "Courant sonde lambda 1 banc 1", "Corriente sonda lambda 1 banco 1", "Corrente lambda 1 bancata 1"}},
    {"P2347", {"Cylinder 12 knocks", "Zylinder 12 klopft", "Cylindre 12, cliquetis", "Cilindro 12, picado", "Cilindro 12, detonazione"}},
    {"P2590", {"actuator sensor B, intermittent", "Ladedrucksteller B, Signal setzt aus", "suralimentation B", "sobrealimentación B", "turbo B, segnale intermittente"}},
    {"P2763", {"Converter clutch pressure solenoid, voltage too high", "Wandlerkupplung, Spannung zu hoch", "convertisseur, tension trop élevée", "convertidor, tensión demasiado alta", "convertitore, tensione troppo alta"}},
    {"P2824", {"Pressure control solenoid H, voltage too high", "Druckregelventil H, Spannung zu hoch", "pression H, tension", "presión H, tensión", "pressione H, tensione"}},
    {"P3496", {"Exhaust valve shut-off cylinder 12, voltage too high", "Auslassabschaltung Zylinder 12", "échappement cylindre 12", "escape cilindro 12", "scarico cilindro 12"}},
    {"C003A", {"rear right", "hinten rechts", "arrière droite", "trasera derecha", "posteriore destra"}},
    {"U0121", {"ABS control unit, no communication", "ABS-Steuergerät, keine Kommunikation", "Calculateur ABS, communication", "ABS, sin comunicación", "ABS, nessuna comunicazione"}},
    {"U0205", {"Door control unit G", "Türsteuergerät G", "porte G", "puerta G", "porta G"}},
    {"U0331", {"Body control unit A, incompatible", "Karosseriesteuergerät A, Software", "carrosserie A, logiciel", "carrocería A, software", "carrozzeria A, software"}},
    {"U0431", {"Body control unit A sends invalid", "Karosseriesteuergerät A sendet", "carrosserie A, données", "carrocería A, envía", "carrozzeria A, invia"}},
};
// clang-format on

TEST(CodeFiles, SayWhatTheCodeMeans) {
    for (const Meaning& row : kMeanings) {
        for (std::size_t language = 0; language < std::size(kCodeFiles); ++language)
            EXPECT_THAT(Description(kCodeFiles[language], row.Code), HasSubstr(row.Words[language]))
                << row.Code;
    }
}

}  // namespace
}  // namespace dravik
