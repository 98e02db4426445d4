#include <algorithm>
#include <utility>

#include "core/basGlobal.h"
#include "obd/basOBD.h"
#include "platform/Number.h"
#include "platform/Text.h"
#include "settings/basSettings.h"
#include "skin/check/CheckSkinParts.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

using std::string;
using std::string_view;

string Quoted(string_view text) {
    return "\"" + string(text) + "\"";
}

bool IsWholeNumber(string_view text) {
    return WholeNumber(WithoutPlus(text)).has_value();
}

/// A number written in digits alone.
std::optional<int> Index(string_view text) {
    return text.starts_with('-') ? std::nullopt : WholeNumber(text);
}

/// One function text on its way through the evaluators.
struct Call {
    FunctionText Text;     ///< as the evaluator takes it apart
    string_view Received;  ///< the whole text as it stands in the skin
};

// Lengths of the names in front of a number: "chart", "button" and "slider".
constexpr std::size_t kChartName = 5;
constexpr std::size_t kControlName = 6;

string SensorFault(const Call& call) {
    const string_view name = call.Text.Argument;
    if (name.find('_') != string_view::npos)
        return "the sensor name " + Quoted(name) + " holds a \"_\"";
    if (FindSensor(name) == nullptr && SensorStoodFor(name) == nullptr) {
        std::vector<string> names;
        for (const SensorRecord& sensor : SensorsInUse()) names.push_back(sensor.Function);
        return "the sensor file has no sensor " + Quoted(name) + DidYouMean(name, names);
    }
    return {};
}

string ChartFault(const Call& call) {
    const string_view argument = call.Text.Argument;
    const auto number =
        argument.starts_with("chart") ? Index(argument.substr(kChartName)) : std::nullopt;
    if (!number) return Quoted(argument) + " is no chart: chart0, chart1, ... or chartall";
    if (*number >= kChartLimit)
        return "there are charts 0 to " + std::to_string(kChartLimit - 1) + " only";
    return {};
}

string ControlFault(const Call& call) {
    const string_view argument = call.Text.Argument;
    const string_view name = argument.substr(0, kControlName);
    const bool slider = name == "slider";
    if ((!slider && name != "button") || !Index(argument.substr(name.size())))
        return Quoted(argument) + " is neither button0, button1, ... nor slider0, slider1, ...";
    if (slider && call.Text.Word != "mouseover_slider")
        return "tests a button; a slider is mouseover_slider_" + string(argument);
    return {};
}

string NumberFault(const Call& call) {
    const string_view argument = call.Text.Argument;
    return IsWholeNumber(argument) ? string{} : Quoted(argument) + " is not a whole number";
}

string StepFault(const Call& call) {
    const auto steps = StepWords();
    const string_view argument = call.Text.Argument;
    if (std::find(steps.begin(), steps.end(), argument) != steps.end() || IsWholeNumber(argument))
        return {};
    return Quoted(argument) + " is none of up, down, pageup, pagedown or a number";
}

string PidFault(const Call& call) {
    const auto pid = HexNumber(call.Text.Argument);
    if (!pid) return Quoted(call.Text.Argument) + " is no PID: a number in hex, such as 0C";
    if (*pid < 0 || *pid >= kShownPids) return "only the PIDs 00 to 4E can be shown";
    return {};
}

string SourceFault(const Call& call) {
    for (const SensorRecord& sensor : SensorsInUse()) {
        if (sensor.Source == call.Received) return {};
    }
    return "no sensor of the sensor file has the source " + Quoted(call.Received);
}

/// The name behind "word_" as the skin has it.
string WordNameOf(const Call& call) {
    return string(SplitAtFirst(call.Received).Argument);
}

string WordFault(const Call& call) {
    const string name = WordNameOf(call);
    if (NamesLabelFunction(name)) return CheckFunction(kCaptionRole, name).Fault;
    if (name.find('=') != string::npos) return "no language file can hold a text with a \"=\"";
    return {};
}

string UnknownName(const char* thing, string_view name, const std::vector<string>& names) {
    const bool known = std::any_of(names.begin(), names.end(), [name](const string& candidate) {
        return LowerCased(candidate) == LowerCased(string(name));
    });
    if (known) return {};
    return string("there is no ") + thing + " " + Quoted(name) + DidYouMean(name, names);
}

string SkinFault(const Call& call) {
    return UnknownName("skin", call.Text.Argument, SkinNames());
}

string LanguageFault(const Call& call) {
    return UnknownName("language", call.Text.Argument, LanguageNames());
}

string NoFault(const Call&) {
    return {};
}

struct ArgumentCheck {
    Takes Argument;
    string (*Fault)(const Call& call);
};

constexpr ArgumentCheck kArgumentChecks[] = {
    {Takes::Sensor, SensorFault}, {Takes::Page, NoFault},           {Takes::Box, NoFault},
    {Takes::Chart, ChartFault},   {Takes::Control, ControlFault},   {Takes::Number, NumberFault},
    {Takes::Step, StepFault},     {Takes::Pid, PidFault},           {Takes::Source, SourceFault},
    {Takes::Skin, SkinFault},     {Takes::Message, NoFault},        {Takes::Question, NoFault},
    {Takes::WordName, WordFault}, {Takes::Language, LanguageFault},
};

string ArgumentFault(const FunctionWord& row, const Call& call) {
    if (call.Text.Argument.empty())
        return Quoted(row.Word) + " needs an argument, such as " + ExampleOf(row);
    for (const ArgumentCheck& check : kArgumentChecks) {
        if (check.Argument == row.Argument) return check.Fault(call);
    }
    return {};
}

/// What the rows of one evaluator say to a text whose word they know.
class Judgement {
 public:
    /// True when the row takes the text.
    bool Accepts(const FunctionWord& row, const Call& call) {
        if (row.Argument == Takes::Fixed) {
            if (row.Sample == call.Text.Argument) return true;
            choices_ += (choices_.empty() ? "" : ", ") + string(row.Sample);
            ++choiceCount_;
        } else if (row.Argument == Takes::Nothing) {
            if (call.Text.Argument.empty()) return true;
            spare_ = Quoted(row.Word) + " takes no argument";
        } else {
            string fault = ArgumentFault(row, call);
            if (fault.empty()) return true;
            fault_ = std::move(fault);
        }
        word_ = call.Text.Word;
        argument_ = call.Text.Argument;
        return false;
    }

    /// The fault that helps most; empty when no row knew the word.
    string Fault() const {
        if (!fault_.empty()) return fault_;
        if (choiceCount_ == 0) return spare_;
        if (argument_.empty()) return Quoted(word_) + " needs an argument: " + choices_;
        if (choiceCount_ == 1) return Quoted(word_) + " takes only the argument " + choices_;
        return Quoted(argument_) + " is none of " + choices_;
    }

 private:
    string fault_, choices_, spare_, word_, argument_;
    int choiceCount_ = 0;
};

/// The element that a text names by its number on the page.
std::optional<NamedElement> ElementOf(const FunctionWord& row, const Call& call) {
    const bool chart = row.Argument == Takes::Chart;
    const bool snapshot = row.Argument == Takes::Number && row.Word == "snapshot";
    if (!chart && !snapshot && row.Argument != Takes::Control) return std::nullopt;
    const std::size_t name = chart ? kChartName : snapshot ? 0 : kControlName;
    const std::optional<int> number = Index(call.Text.Argument.substr(name));
    if (!number) return std::nullopt;
    const SkinKind& kind = row.Argument != Takes::Control   ? kChartKind
                           : row.Word == "mouseover_slider" ? kSliderKind
                                                            : kButtonKind;
    return NamedElement{&kind, *number, {}, {}};
}

/// Pages that a command opens without naming them.
struct ImpliedPage {
    string_view Command;
    const char* Page;
};
constexpr ImpliedPage kImpliedPages[] = {
    {"openvalue", "value"}, {"panel", "choose"}, {"choose", "panel"}};

/// Where a text leads that its evaluator takes.
void Follow(const FunctionWord& row, const Call& call, FunctionVerdict& verdict) {
    verdict.Word = row.Word;
    verdict.Element = ElementOf(row, call);
    if (row.Argument == Takes::Fixed) verdict.Fixed = row.Sample;
    if (row.Argument == Takes::WordName && !NamesLabelFunction(call.Text.Argument))
        verdict.WordName = WordNameOf(call);
    if (row.Argument == Takes::Page || row.Argument == Takes::Box)
        verdict.Openings.push_back(
            {string(call.Text.Argument), row.Argument == Takes::Box, {}, {}});
    for (const ImpliedPage& implied : kImpliedPages) {
        if (implied.Command == row.Word) verdict.Openings.push_back({implied.Page, false, {}, {}});
    }
    if (row.Argument != Takes::Question) return;
    const std::size_t colon = call.Received.rfind(':');
    if (colon == string_view::npos) return;
    verdict = CheckFunction(kCommandRole, string(call.Received.substr(colon + 1)));
}

/// The words and the whole fixed texts of a key, for what an unknown text may have meant.
std::vector<string> KnownTexts(const FunctionRole& role) {
    std::vector<string> known;
    const auto add = [&known](const FunctionWord& row) {
        known.emplace_back(row.Word);
        if (row.Argument == Takes::Fixed) known.push_back(ExampleOf(row));
    };
    for (const FunctionRole::Evaluator& evaluator : role.Evaluators) {
        for (const FunctionWord& row : evaluator.Words()) add(row);
    }
    for (const FunctionWord& row : role.Own) add(row);
    return known;
}

/// The text with its word in lower case, where that makes it one that an evaluator takes which
/// tells capitals apart; else nothing.
string InLowerCase(const FunctionRole& role, const string& text, const string& lowered) {
    const std::size_t word = SplitAtLast(lowered).Word.size();
    string wanted = lowered.substr(0, word) + text.substr(word);
    if (wanted == text) return {};
    for (const FunctionRole::Evaluator& evaluator : role.Evaluators) {
        if (!evaluator.KeepsCase) continue;
        const Call call{SplitAtLast(wanted), wanted};
        Judgement judgement;
        for (const FunctionWord& row : evaluator.Words()) {
            if (row.Word == call.Text.Word && judgement.Accepts(row, call)) return wanted;
        }
    }
    return {};
}

string UnknownFault(const FunctionRole& role, const string& text, const string& lowered) {
    const FunctionText first = SplitAtFirst(lowered);
    const auto known = KnownTexts(role);
    const bool wordKnown = std::find(known.begin(), known.end(), first.Word) != known.end();
    if (wordKnown && first.Argument.find('_') != string_view::npos)
        return "one \"_\" too many: the argument of " + Quoted(first.Word) + " holds none";
    const string_view word = SplitAtLast(lowered).Word;
    string hint = DidYouMean(lowered, known);
    if (hint.empty()) hint = DidYouMean(word, known);
    return Quoted(text) + " is not " + role.Meaning + hint;
}

/// A word that stands alone may be anything where any word will do, unless it looks like a slip.
string LoneWordFault(const FunctionRole& role, const string& text) {
    constexpr std::size_t kShortest = 4;  // of three letters, one slip makes another word
    if (text.size() < kShortest) return {};
    const string hint = DidYouMean(text, KnownTexts(role));
    if (hint.empty()) return {};
    return "no image function is called " + Quoted(text) + ", so the picture is always shown" +
           hint;
}

/// What is wrong with a text that no row takes.
string FaultOf(const FunctionRole& role, const Judgement& judgement, const string& text) {
    const string lowered = LowerCased(text);
    if (const string wanted = InLowerCase(role, text, lowered); !wanted.empty())
        return "the word of a value source is written in lower case: " + Quoted(wanted);
    if (&role == &kValueRole && CheckFunction(kCaptionRole, text).Fault.empty())
        return Quoted(text) + " gives a text, not a number";
    if (string fault = judgement.Fault(); !fault.empty()) return fault;
    if (role.AnyWord && text.find('_') == string::npos) return LoneWordFault(role, text);
    return UnknownFault(role, text, lowered);
}

}  // namespace

bool NamesLabelFunction(string_view name) {
    const string lowered = LowerCased(string(name));
    const FunctionText text = SplitAtFirst(lowered);
    if (text.Argument.empty()) return false;
    for (const auto& words : {TextFunctionWords(), NumberFunctionWords()}) {
        if (std::find(words.begin(), words.end(), text.Word) != words.end()) return true;
    }
    return false;
}

FunctionVerdict CheckFunction(const FunctionRole& role, const string& text) {
    const string lowered = LowerCased(text);
    FunctionVerdict verdict;
    Judgement judgement;
    for (const FunctionWord& row : role.Own) {
        const Call call{SplitAtLast(lowered), text};
        if (text == row.Word) return verdict;
        if (row.Argument == Takes::Ending && lowered.starts_with(row.Word)) return verdict;
        if (row.Word == call.Text.Word && judgement.Accepts(row, call)) return verdict;
    }
    for (const FunctionRole::Evaluator& evaluator : role.Evaluators) {
        const string& read = evaluator.KeepsCase ? text : lowered;
        const Call call{
            evaluator.At == FunctionRole::Split::First ? SplitAtFirst(read) : SplitAtLast(read),
            text};
        for (const FunctionWord& row : evaluator.Words()) {
            if (row.Word != call.Text.Word || !judgement.Accepts(row, call)) continue;
            Follow(row, call, verdict);
            return verdict;
        }
    }
    verdict.Fault = FaultOf(role, judgement, text);
    return verdict;
}

string NearestWord(string_view word, const std::vector<string>& known) {
    constexpr std::size_t kMostSlips = 2;
    string best;
    std::size_t fewest = std::min(kMostSlips, word.size() / 3) + 1;
    for (const string& candidate : known) {
        // One row of the table of edit distances, letters without regard to case.
        std::vector<std::size_t> row(candidate.size() + 1);
        for (std::size_t j = 0; j < row.size(); ++j) row[j] = j;
        for (std::size_t i = 1; i <= word.size(); ++i) {
            std::size_t diagonal = std::exchange(row[0], i);
            for (std::size_t j = 1; j < row.size(); ++j) {
                const bool same = EqualsNoCase(word.substr(i - 1, 1), candidate.substr(j - 1, 1));
                const std::size_t replaced = diagonal + (same ? 0 : 1);
                diagonal = std::exchange(row[j], std::min({replaced, row[j] + 1, row[j - 1] + 1}));
            }
        }
        if (row.back() < fewest) {
            fewest = row.back();
            best = candidate;
        }
    }
    return best;
}

string DidYouMean(string_view word, const std::vector<string>& known) {
    const string nearest = NearestWord(word, known);
    return nearest.empty() ? nearest : "; did you mean " + Quoted(nearest) + "?";
}

}  // namespace dravik
