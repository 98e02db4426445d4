#include "platform/ProfileIndex.h"

#include <utility>

#include "platform/NameHash.h"
#include "platform/ProfileLine.h"
#include "platform/Text.h"

namespace dravik {
namespace {

NameHash HashOf(std::string_view section) {
    NameHash hash;
    hash.Add(section);
    return hash;
}

std::uint32_t HashOf(NameHash section, std::string_view key) {
    section.Add(key);
    return section.Result();
}

}  // namespace

ProfileIndex::ProfileIndex(std::string text) : text_(std::move(text)), slots_(64) {
    Parse();
}

void ProfileIndex::Parse() {
    std::string_view rest = text_;
    rest.remove_prefix(ProfileByteOrderMark(rest).size());
    std::optional<std::string_view> section;
    NameHash sectionHash;
    while (!rest.empty()) {
        std::string_view line = TakeProfileLine(rest);
        line.remove_suffix(ProfileLineEnd(line).size());
        const ProfileLine parsed = ParseProfileLine(line);
        if (parsed.Kind == ProfileLineKind::Section) {
            // Only the first section of a name counts; what stands in a later one is never found.
            sectionHash = HashOf(parsed.Name);
            const bool first = Add({parsed.Name, {}, {}, HashOf(sectionHash, {})});
            section = first ? std::optional(parsed.Name) : std::nullopt;
        } else if (parsed.Kind == ProfileLineKind::Entry && section) {
            Add({*section, parsed.Name, parsed.Value, HashOf(sectionHash, parsed.Name)});
        }
    }
}

bool ProfileIndex::Add(const Entry& entry) {
    entries_.push_back(entry);
    std::uint32_t& slot = slots_[SlotOf(entry.Hash, entry.Section, entry.Key)];
    if (slot != 0) return false;
    slot = static_cast<std::uint32_t>(entries_.size());
    if (++used_ * 2 > slots_.size()) Grow();
    return true;
}

void ProfileIndex::Grow() {
    std::vector<std::uint32_t> old(slots_.size() * 2);
    old.swap(slots_);
    for (const std::uint32_t number : old) {
        if (number == 0) continue;
        const Entry& entry = entries_[number - 1];
        slots_[SlotOf(entry.Hash, entry.Section, entry.Key)] = number;
    }
}

std::size_t ProfileIndex::SlotOf(std::uint32_t hash, std::string_view section,
                                 std::string_view key) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = hash & mask;
    for (; slots_[slot] != 0; slot = (slot + 1) & mask) {
        const Entry& entry = entries_[slots_[slot] - 1];
        if (entry.Hash == hash && EqualsNoCase(entry.Key, key) &&
            EqualsNoCase(entry.Section, section))
            break;
    }
    return slot;
}

std::optional<std::string_view> ProfileIndex::Find(std::string_view section,
                                                   std::string_view key) const {
    if (key.empty()) return std::nullopt;
    const std::uint32_t number = slots_[SlotOf(HashOf(HashOf(section), key), section, key)];
    if (number == 0) return std::nullopt;
    return entries_[number - 1].Value;
}

std::vector<std::string> ProfileIndex::Sections() const {
    std::vector<std::string> names;
    for (const Entry& entry : entries_) {
        if (entry.Key.empty()) names.emplace_back(entry.Section);
    }
    return names;
}

std::vector<std::string> ProfileIndex::Keys(std::string_view section) const {
    std::vector<std::string> names;
    const std::uint32_t number = slots_[SlotOf(HashOf(HashOf(section), {}), section, {})];
    if (number == 0) return names;
    for (std::size_t i = number; i < entries_.size() && !entries_[i].Key.empty(); ++i)
        names.emplace_back(entries_[i].Key);
    return names;
}

}  // namespace dravik
