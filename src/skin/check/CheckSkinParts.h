#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "controls/PictureCheck.h"
#include "settings/Words.h"
#include "skin/SkinFile.h"
#include "skin/SkinVocabulary.h"
#include "skin/check/LongestTexts.h"

/// The parts of the skin checker.
namespace dravik {

/// A page that a function text opens.
struct Opening {
    std::string Name;
    bool Box = false;
    std::string Section;  ///< where the text stands
    std::string Key;
};

/// A button, slider or chart that a function text names by its number on the page.
struct NamedElement {
    const SkinKind* Kind;
    int Number = 0;
    std::string Section;  ///< where the text stands
    std::string Key;
};

/// What a function text comes to.
struct FunctionVerdict {
    std::string Fault;  ///< empty when the text does something
    std::vector<Opening> Openings;
    std::optional<NamedElement> Element;
    std::string_view Word;   ///< of the row that answers
    std::string_view Fixed;  ///< its argument where it takes only one, such as "+" of "openmenu_+"
    std::string WordName;    ///< the name that is looked up among the words of the language
};

/// Takes a function text apart as the evaluators of its key do.
FunctionVerdict CheckFunction(const FunctionRole& role, const std::string& text);

/// True for a label function with an argument, such as stands behind "word_" to have what it shows
/// looked up.
bool NamesLabelFunction(std::string_view name);

/// The word of `known` that is one or two slips of the pen away; empty when there is none.
std::string NearestWord(std::string_view word, const std::vector<std::string>& known);

/// "; did you mean NAME?", or nothing.
std::string DidYouMean(std::string_view word, const std::vector<std::string>& known);

using KindCounts = std::map<const SkinKind*, int>;  ///< elements of each kind

/// How many elements of a kind there are; a kind that is not named has none.
int CountOf(const KindCounts& counts, const SkinKind* kind);

/// What the walk over the pages needs to know of one section.
struct SectionFacts {
    KindCounts Counts;
    std::vector<Opening> Openings;
    std::vector<NamedElement> Named;
    std::string NextMenuKey;    ///< key with "openmenu_+", empty when there is none
    std::string MenuBeforeKey;  ///< key with "openmenu_-"
    bool LeavesBox = false;     ///< a button closes a box, or opens a page in its place
};

/// Collects what is wrong with one skin file.
class SkinFindings {
 public:
    void Add(const std::string& section, const std::string& key, const std::string& text);

    /// The findings in the order of the file.
    std::vector<SkinError> Sorted() const;

    // Checks of one section. Each looks at all keys that stand in it.
    SectionFacts CheckPageSection(const std::string& section);
    void CheckGeneral();
    void CheckLines();
    void CheckMessage(const std::string& section);

 private:
    using PicturePair = std::pair<PictureFacts, PictureFacts>;  ///< plain, and of double size

    const PicturePair& FactsOfPicture(const std::string& name);
    void CheckValue(const std::string& section, const std::string& key, Read how);
    void CheckNumber(const std::string& section, const std::string& key, Read how);
    void CheckPicture(const std::string& section, const std::string& key);
    FunctionVerdict CheckRole(const std::string& section, const std::string& key,
                              const FunctionRole& role);
    void CheckWord(const std::string& section, const std::string& key, const std::string& name);
    void CheckRepeats(const std::string& section);
    void CheckSectionKeys(const std::string& section, std::span<const SectionKey> keys);
    void CheckElement(const SkinElement& element, SectionFacts& facts);
    void CheckRanges(const SkinElement& element);
    void CheckSense(const SkinElement& element);
    void CheckPlace(const SkinElement& element);
    void CheckFont(const std::string& section, const std::string& key);
    void CheckText(const SkinElement& element);
    int RoomOf(const TextPlace& place, const SkinElement& element);
    void CheckUnknownKeys(const std::string& section, const SectionFacts& facts);
    static void Note(SectionFacts& facts, const FunctionVerdict& verdict, const std::string& key);

    std::vector<SkinError> findings_;
    std::map<std::string, PicturePair> pictures_;  ///< by path
    std::map<std::string, WordList> languages_;    ///< by name, once a word has been looked up
    std::set<std::string> words_;                  ///< looked up, in lower case
    std::set<std::string> missingFonts_;           ///< that were told, in lower case
    LongestTexts texts_;
};

/// The number that stands for "#" in a key's name ("Menu#", "Button#X"); nothing when the name is
/// another one.
std::optional<int> NumberInKey(std::string_view name, std::string_view key);

}  // namespace dravik
