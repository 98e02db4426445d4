#include "skin/SkinVocabulary.h"

/// What each key with a function text may name.
namespace dravik {

namespace {

using Evaluator = FunctionRole::Evaluator;
using enum Takes;

constexpr Evaluator kCommands[] = {{CommandRows}};
constexpr Evaluator kStates[] = {{ImageFunctionRows}};
constexpr Evaluator kTexts[] = {
    {TextFunctionRows, FunctionRole::Split::First}, {NumberFunctionRows}, {ImageFunctionRows}};
constexpr Evaluator kValues[] = {{NumberFunctionRows},
                                 {SourceRows, FunctionRole::Split::Last, true}};

constexpr FunctionWord kButtonWords[] = {
    {"listview", Step, "pagedown", "steps the list when `object_select` presses the button"},
    {kDvdWord, Nothing, "", "reserved for a DVD menu"},
};

constexpr FunctionWord kCaptionWords[] = {
    {kTextWord, Nothing, "", "the fixed text of the caption key"},
    {kTitleWord, Nothing, "",
     "title and version of the program; works on a label only, there also as its `Caption`"},
    {kMediaTagWord, Ending, "title", "reserved for the tags of a media file, shows `Off`"},
    {"trackname", Nothing, "", "reserved, shows `Off`"},
    {"tracknameartist", Nothing, "", "reserved, shows `Off`"},
    {"artisttrackname", Nothing, "", "reserved, shows `Off`"},
};

constexpr FunctionWord kPictureWords[] = {
    {"picture", Nothing, "", "always shown, as with any other word without `_`"},
    {kHighlightWord, Nothing, "",
     "the highlight: laid beneath the selected button or slider, so their pictures need to be "
     "see-through somewhere"},
    {kEntryWord, Nothing, "", "the picture of the selected entry of a media list"},
};

constexpr FunctionWord kListWords[] = {
    {"troublecodes", Nothing, "", "the trouble codes with their descriptions"},
    {"media", Nothing, "", "music and films"},
    {"gallery", Nothing, "", "pictures"},
    {"playlist", Nothing, "", "playlists"},
    {"newfiles", Nothing, "", "a second list of music and films"},
    {"extprog", Nothing, "", "empty, reserved for programs"},
    {"dvdchapters", Nothing, "", "empty, reserved for chapters"},
    {"phonebook", Nothing, "", "empty, reserved for a phone book"},
    {"diagnosis", Fixed, "codes", "the codes that the diagnosis found: stored, pending, permanent"},
    {"diagnosis", Fixed, "frame",
     "the freeze frame of the code that was selected in `diagnosis_codes`"},
    {"diagnosis", Fixed, "readiness",
     "whether the vehicle is ready for inspection, and each monitor"},
    {"diagnosis", Fixed, "tests", "the tests that the vehicle has made, with their limits"},
    {"diagnosis", Fixed, "vehicle", "what vehicle it is, its control units and counters"},
    {"diagnosis", Fixed, "reports",
     "the reports that were written, which an activated entry opens"},
};

constexpr FunctionWord kTextboxWords[] = {
    {"phonenumber", Nothing, "", "a phone number"},
    {"smstext", Nothing, "", "the text of a message"},
    {"searchstring", Nothing, "", "a text to search for"},
};

constexpr FunctionWord kAnswerWords[] = {
    {"yes", Nothing, "", "yes"},
    {"no", Nothing, "", "no"},
    {"ok", Nothing, "", "taken note of"},
};

constexpr FunctionWord kMessageWords[] = {
    {"word", Fixed, "message",
     "the message in the user's language, by the section `Words` of the language file"},
};

}  // namespace

const FunctionRole kCommandRole{kCommands, kButtonWords, false, "a command"};
const FunctionRole kCaptionRole{kTexts, kCaptionWords, false, "a label function"};
const FunctionRole kStateRole{kStates, {}, false, "an image function"};
const FunctionRole kPictureRole{kStates, kPictureWords, true, "an image function"};
const FunctionRole kValueRole{kValues, {}, false, "a number function or a value source"};
const FunctionRole kListRole{{}, kListWords, false, "a list"};
const FunctionRole kTextboxRole{{}, kTextboxWords, false, "a text box"};
const FunctionRole kAnswerRole{{}, kAnswerWords, false, "an answer"};
const FunctionRole kAnswerCaptionRole{kTexts, {}, false, "a label function"};
const FunctionRole kMessageRole{{}, kMessageWords, false, "a way to show a message"};

}  // namespace dravik
