#include <algorithm>
#include <charconv>
#include <utility>

#include "core/basGlobal.h"
#include "obd/basOBD.h"
#include "platform/Text.h"
#include "skin/CheckSkinParts.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

using std::string;
using std::string_view;

string Quoted(string_view text) {
    return "\"" + string(text) + "\"";
}

bool IsWholeNumber(string_view text) {
    int number = 0;
    if (text.starts_with('+')) text.remove_prefix(1);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc{} && end == text.data() + text.size();
}

/// A number written in digits alone.
std::optional<int> Index(string_view text) {
    if (text.empty() || text.find_first_not_of("0123456789") != string_view::npos)
        return std::nullopt;
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{}) return std::nullopt;
    return number;
}

/// One function text on its way through the evaluators.
struct Call {
    FunctionText Text;     ///< as the evaluator takes it apart
    string_view Received;  ///< the whole text as it stands in the skin
};

/// The argument as it stands in the skin, with its capitals.
string_view WrittenArgument(const Call& call) {
    return call.Received.substr(call.Received.size() - call.Text.Argument.size());
}

string SensorFault(const Call& call) {
    const string_view name = call.Text.Argument;
    if (name.find('_') != string_view::npos)
        return "the sensor name " + Quoted(name) + " holds a \"_\"";
    if (!FindSensor(name)) {
        std::vector<string> names;
        for (int i = 0; i < basGlobal.SensorCount; ++i)
            names.push_back(basGlobal.Sensors[static_cast<std::size_t>(i)].Function);
        return "the sensor file has no sensor " + Quoted(name) + DidYouMean(name, names);
    }
    if (WrittenArgument(call) != name)
        return "sensor names are written in lower case: " + Quoted(name);
    return {};
}

string ChartFault(const Call& call) {
    constexpr string_view kName = "chart";
    const string_view argument = call.Text.Argument;
    const auto number =
        argument.starts_with(kName) ? Index(argument.substr(kName.size())) : std::nullopt;
    if (!number) return Quoted(argument) + " is no chart: chart0, chart1, ... or chartall";
    if (*number >= kChartLimit)
        return "there are charts 0 to " + std::to_string(kChartLimit - 1) + " only";
    return {};
}

string ControlFault(const Call& call) {
    constexpr std::size_t kNameLength = 6;
    const string_view argument = call.Text.Argument;
    const string_view name = argument.substr(0, kNameLength);
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
    for (int i = 0; i < basGlobal.SensorCount; ++i) {
        if (basGlobal.Sensors[static_cast<std::size_t>(i)].Source == call.Received) return {};
    }
    return "no sensor of the sensor file has the source " + Quoted(call.Received);
}

string NoFault(const Call&) {
    return {};
}

struct ArgumentCheck {
    Takes Argument;
    string (*Fault)(const Call& call);
};

constexpr ArgumentCheck kArgumentChecks[] = {
    {Takes::Sensor, SensorFault}, {Takes::Page, NoFault},         {Takes::Box, NoFault},
    {Takes::Chart, ChartFault},   {Takes::Control, ControlFault}, {Takes::Number, NumberFault},
    {Takes::Step, StepFault},     {Takes::Pid, PidFault},         {Takes::Source, SourceFault},
    {Takes::Message, NoFault},    {Takes::Question, NoFault},
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
        } else if (row.Argument == Takes::Nothing) {
            if (call.Text.Argument.empty()) return true;
            spare_ = Quoted(row.Word) + " takes no argument";
        } else {
            string fault = ArgumentFault(row, call);
            if (fault.empty()) return true;
            fault_ = std::move(fault);
        }
        argument_ = call.Text.Argument;
        return false;
    }

    /// The fault that helps most; empty when no row knew the word.
    string Fault() const {
        if (!fault_.empty()) return fault_;
        if (!choices_.empty()) return Quoted(argument_) + " is none of " + choices_;
        return spare_;
    }

 private:
    string fault_, choices_, spare_, argument_;
};

/// Where a text leads that its evaluator takes.
void Follow(const FunctionWord& row, const Call& call, FunctionVerdict& verdict) {
    verdict.Word = row.Word;
    if (row.Argument == Takes::Fixed) verdict.Fixed = row.Sample;
    if (row.Argument == Takes::Page || row.Argument == Takes::Box)
        verdict.Openings.push_back(
            {string(call.Text.Argument), row.Argument == Takes::Box, {}, {}});
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

}  // namespace

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
    verdict.Fault = judgement.Fault();
    if (!verdict.Fault.empty()) return verdict;
    if (!role.AnyWord || text.find('_') != string::npos)
        verdict.Fault = UnknownFault(role, text, lowered);
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
