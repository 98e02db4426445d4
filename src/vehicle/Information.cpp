#include "vehicle/Information.h"

#include <algorithm>

#include "vehicle/Pids.h"

namespace dravik::vehicle {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr int kEngineUnit = 1;
constexpr const char* kCalibration = "DRAVIKVEHICLE001";
constexpr std::size_t kCalibrationSize = 16;
constexpr std::size_t kAcronymSize = 4;
constexpr std::size_t kNameSize = 20;  // with acronym and dash
constexpr std::size_t kPart = 4;       // bytes of an item in a short message

/// What a unit has of one type: its items, all in one row.
struct Items {
    std::uint8_t Count = 0;
    Bytes Data;

    void Add(const std::string& text, std::size_t size) {
        ++Count;
        Data.insert(Data.end(), text.begin(), text.end());
        Data.resize(Data.size() + size - std::min(size, text.size()));
    }
};

Items Vin(const Scenario& scenario, int unit) {
    Items items;
    if (unit == kEngineUnit) items.Add(scenario.Vin, scenario.Vin.size());
    return items;
}

UnitRule RuleOf(const Scenario& scenario, int unit) {
    const auto index = static_cast<std::size_t>(unit - 1);
    UnitRule rule = index < scenario.UnitRules.size() ? scenario.UnitRules[index] : UnitRule();
    if (unit == kEngineUnit && rule.Calibrations.empty()) rule.Calibrations = {kCalibration};
    return rule;
}

Items Calibrations(const Scenario& scenario, int unit) {
    Items items;
    for (const auto& text : RuleOf(scenario, unit).Calibrations) items.Add(text, kCalibrationSize);
    return items;
}

Items Verifications(const Scenario& scenario, int unit) {
    const Bytes numbers = RuleOf(scenario, unit).Verifications;
    return {static_cast<std::uint8_t>(numbers.size() / kPart), numbers};
}

Items Name(const Scenario& scenario, int unit) {
    Items items;
    std::string name = RuleOf(scenario, unit).Name;
    if (name.empty()) return items;
    const auto dash = std::min(name.find('-'), kAcronymSize);
    if (dash < kAcronymSize) name.insert(dash, kAcronymSize - dash, '\0');
    items.Add(name, kNameSize);
    return items;
}

/// The types that carry something. On buses with short messages the type in front of each says how
/// many messages it takes.
struct TypeRow {
    std::uint8_t Type;
    Items (*Of)(const Scenario& scenario, int unit);
};

constexpr TypeRow kTypes[] = {
    {0x02, Vin},
    {0x04, Calibrations},
    {0x06, Verifications},
    {0x0A, Name},
};

std::size_t ShortMessages(const Items& items) {
    return (items.Data.size() + kPart - 1) / kPart;
}

/// Mode, type, number of the message and four bytes, with zeroes in front where the items are no
/// multiple of four.
std::vector<Bytes> InParts(std::uint8_t type, Items items) {
    const std::size_t count = ShortMessages(items);
    items.Data.insert(items.Data.begin(), count * kPart - items.Data.size(), 0);
    std::vector<Bytes> messages;
    for (std::size_t i = 0; i < count; ++i) {
        const auto from = items.Data.begin() + static_cast<std::ptrdiff_t>(i * kPart);
        messages.push_back({0x49, type, static_cast<std::uint8_t>(i + 1)});
        messages.back().insert(messages.back().end(), from, from + kPart);
    }
    return messages;
}

std::vector<Bytes> Mask(const Scenario& scenario, int unit, bool longMessages) {
    bool any = false;
    const auto mask = SupportMask(0, [&](int type) {
        for (const TypeRow& row : kTypes) {
            const bool own = row.Type == type || (!longMessages && row.Type - 1 == type);
            if (own && row.Of(scenario, unit).Count > 0) return any = true;
        }
        return false;
    });
    if (!any) return {};
    Bytes message = {0x49, 0x00};
    if (!longMessages) message.push_back(0x01);
    message.insert(message.end(), mask.begin(), mask.end());
    return {message};
}

}  // namespace

std::vector<Bytes> InformationOf(const Scenario& scenario, int unit, std::uint8_t type,
                                 bool longMessages) {
    if (type == 0x00) return Mask(scenario, unit, longMessages);
    for (const TypeRow& row : kTypes) {
        const bool counted = !longMessages && row.Type - 1 == type;
        if (row.Type != type && !counted) continue;
        const Items items = row.Of(scenario, unit);
        if (items.Count == 0) return {};
        if (counted) return {{0x49, type, static_cast<std::uint8_t>(ShortMessages(items))}};
        if (!longMessages) return InParts(type, items);
        Bytes message = {0x49, type, items.Count};
        message.insert(message.end(), items.Data.begin(), items.Data.end());
        return {message};
    }
    return {};
}

}  // namespace dravik::vehicle
