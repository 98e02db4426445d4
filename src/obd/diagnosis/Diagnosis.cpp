#include "obd/Diagnosis.h"

#include <algorithm>
#include <cmath>

#include "core/basGlobal.h"

namespace dravik {

const Diagnosis* LastDiagnosis() {
    return basGlobal.Diagnosing.Found.get();
}

bool Diagnosing() {
    return basGlobal.ConnState == kDiagnosing;
}

int DiagnosisPercent() {
    const DiagnosisState& state = basGlobal.Diagnosing;
    if (!state.Found || state.Step < 1) return 0;
    constexpr double kWhole = 100;
    return static_cast<int>(kWhole * (state.Step - 1 + state.StepDone) / kDiagnosisParts);
}

std::optional<Lack> LackOf(const Diagnosis& diagnosis, DiagnosisPart part) {
    const auto found =
        std::find_if(diagnosis.Missing.begin(), diagnosis.Missing.end(),
                     [part](const MissingPart& missing) { return missing.Part == part; });
    if (found == diagnosis.Missing.end()) return std::nullopt;
    return found->Why;
}

std::optional<MissingPart> UnreadCodes(const Diagnosis& diagnosis) {
    for (const MissingPart& missing : diagnosis.Missing) {
        if (missing.Part == DiagnosisPart::StoredCodes) return missing;
        const bool others = missing.Part == DiagnosisPart::PendingCodes ||
                            missing.Part == DiagnosisPart::PermanentCodes;
        if (others && missing.Why != Lack::NotSupported) return missing;
    }
    return std::nullopt;
}

}  // namespace dravik
