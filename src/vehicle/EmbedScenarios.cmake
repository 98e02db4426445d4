# Writes the built-in scenarios into a source file, so that their names work without any file.
# Called with -DOUTPUT=... -DFOLDER=...
file(GLOB scenarios ${FOLDER}/*.ini)
list(SORT scenarios)
set(rows "")
foreach(scenario ${scenarios})
  get_filename_component(name ${scenario} NAME_WE)
  file(READ ${scenario} text)
  string(APPEND rows "    {\"${name}\", R\"scenario(${text})scenario\"},\n")
endforeach()
file(WRITE ${OUTPUT} "#include \"vehicle/Scenario.h\"

namespace dravik::vehicle {
namespace {

struct NamedText {
    std::string_view Name, Text;
};

constexpr NamedText kScenarios[] = {
${rows}};

}  // namespace

std::string_view BuiltInScenario(std::string_view name) {
    for (const auto& scenario : kScenarios) {
        if (scenario.Name == name) return scenario.Text;
    }
    return {};
}

std::vector<std::string> BuiltInScenarioNames() {
    std::vector<std::string> names;
    for (const auto& scenario : kScenarios) names.emplace_back(scenario.Name);
    return names;
}

}  // namespace dravik::vehicle
")
