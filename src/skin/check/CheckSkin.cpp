#include "skin/check/CheckSkin.h"

#include <algorithm>
#include <deque>
#include <set>

#include "core/basGlobal.h"
#include "platform/Profile.h"
#include "platform/Text.h"
#include "skin/basSkin.h"
#include "skin/check/CheckSkinParts.h"

namespace dravik {

namespace {

using std::string;

constexpr const char* kGeneral = "General";
constexpr const char* kCommandKey = "Command";
constexpr const char* kStartPage = "mainmenu";
constexpr const char* kNextOutsideTheList = "mediaplayer";  // where "openmenu_+" leads from there
constexpr const char* kBeforeOutsideTheList = "Menu8";      // what "openmenu_-" reads there

/// Walks from page to page as a user can.
class PageWalk {
 public:
    explicit PageWalk(SkinFindings& findings) : findings_(findings) {
        for (const string& section : ProfileSections(basGlobal.SkinFile)) {
            const string name = LowerCased(section);
            if (!sections_.insert(name).second)
                findings_.Add(section, "",
                              "there is more than one such section; only the first is read");
            else
                order_.push_back(section);
        }
        for (int n = 0; n <= kLastCommonObject; ++n) {
            const string menu = ReadSkinValue(kGeneral, "Menu" + std::to_string(n));
            if (menu.empty()) break;
            menus_.push_back(menu);
        }
    }

    void Run() {
        if (!Exists(kStartPage))
            findings_.Add(kStartPage, "", "there is no such section: the program starts with it");
        Open(kStartPage);
        OpenMenuList();
        WalkOn();
        for (const string& section : Unreached()) {
            findings_.Add(section, "", "no command opens this page and no page names it");
            Open(section);
            WalkOn();
        }
        for (const string& section : order_) {
            if (IsMessage(section)) findings_.CheckMessage(section);
            if (named_.contains(LowerCased(section)) && !pages_.contains(LowerCased(section)))
                CheckSharedOnly(section);
        }
        for (const auto& [section, facts] : facts_) CheckNamedElements(facts, most_[section]);
    }

 private:
    bool Exists(const string& section) const { return sections_.contains(LowerCased(section)); }

    static bool IsMessage(const string& section) {
        const auto names = MessageSections();
        return std::any_of(names.begin(), names.end(),
                           [&section](const char* name) { return EqualsNoCase(section, name); });
    }

    void Open(const string& page) {
        if (Exists(page) && pages_.insert(LowerCased(page)).second) waiting_.push_back(page);
    }

    void OpenMenuList() {
        for (std::size_t n = 0; n < menus_.size(); ++n) {
            const string key = "Menu" + std::to_string(n);
            if (!Exists(menus_[n]))
                findings_.Add(kGeneral, key, "there is no page \"" + menus_[n] + "\"");
            else if (menus_[n] != LowerCased(menus_[n]))
                findings_.Add(kGeneral, key,
                              "is to be in lower case: a page that a command has opened is not "
                              "found under \"" +
                                  menus_[n] + "\"");
            Open(menus_[n]);
        }
    }

    void WalkOn() {
        while (!waiting_.empty()) {
            const string page = waiting_.front();
            waiting_.pop_front();
            VisitPage(page);
        }
    }

    const SectionFacts& FactsOf(const string& section) {
        const auto [found, added] = facts_.try_emplace(LowerCased(section));
        if (added) {
            found->second = findings_.CheckPageSection(section);
            for (const Opening& opening : found->second.Openings) {
                if (!Exists(opening.Name))
                    findings_.Add(opening.Section, opening.Key,
                                  "there is no page \"" + opening.Name + "\"");
            }
        }
        return found->second;
    }

    void VisitPage(const string& page) {
        CheckSharedSections(page);
        KindCounts counts;
        std::set<string> boxes;
        for (const string& section : PageSections(page)) {
            const SectionFacts& facts = FactsOf(section);
            for (const auto& [kind, count] : facts.Counts) counts[kind] += count;
            for (const Opening& opening : facts.Openings) {
                const bool atBuild = EqualsNoCase(opening.Key, kCommandKey);
                if (atBuild && !EqualsNoCase(section, page)) continue;  // not run
                if (atBuild && EqualsNoCase(opening.Name, page))
                    findings_.Add(section, kCommandKey, "opens the page itself, again and again");
                Open(opening.Name);
                if (opening.Box && Exists(opening.Name)) boxes.insert(opening.Name);
            }
            CheckMenuSteps(page, section, facts);
        }
        Allow(page, counts);
        CheckLimits(page, counts, "");
        for (const string& box : boxes) {
            CheckBoxOver(page, box, counts);
            CheckWayOut(box);
        }
    }

    void CheckSharedSections(const string& page) {
        const std::vector<string> sections = PageSections(page);
        for (std::size_t n = 0; n < sections.size(); ++n) {
            const string key = "CommonObjects" + std::to_string(n);
            const bool own = n + 1 == sections.size() && sections.size() <= kLastCommonObject + 1 &&
                             EqualsNoCase(sections[n], page) && ReadSkinValue(page, key).empty();
            if (own) continue;
            named_.insert(LowerCased(sections[n]));
            if (EqualsNoCase(sections[n], page))
                findings_.Add(page, key, "the page names itself, so its elements come twice");
            else if (!Exists(sections[n]))
                findings_.Add(page, key, "there is no section \"" + sections[n] + "\"");
        }
    }

    bool InMenuList(const string& page) const {
        return std::any_of(menus_.begin(), menus_.end(),
                           [&page](const string& menu) { return EqualsNoCase(menu, page); });
    }

    /// The menu list has its own way with pages that are not in it.
    void CheckMenuSteps(const string& page, const string& section, const SectionFacts& facts) {
        if (InMenuList(page)) return;
        if (!facts.NextMenuKey.empty()) {
            Open(kNextOutsideTheList);
            if (!Exists(kNextOutsideTheList))
                findings_.Add(
                    section, facts.NextMenuKey,
                    OutsideTheList(page) + kNextOutsideTheList + "\", which does not exist");
        }
        if (!facts.MenuBeforeKey.empty() && !menus_.empty() && menus_.size() <= 8)
            findings_.Add(section, facts.MenuBeforeKey,
                          OutsideTheList(page) + kBeforeOutsideTheList +
                              "\" of the list, which does not exist");
    }

    static string OutsideTheList(const string& page) {
        return "the page \"" + page + "\" is not in the menu list, so this leads to \"";
    }

    void CheckLimits(const string& page, const KindCounts& counts, const string& with) {
        for (const SkinKind* kind : SkinKinds()) {
            const int count = CountOf(counts, kind);
            if (count <= kind->Limit) continue;
            findings_.Add(page, "",
                          "has " + std::to_string(count) + " elements of the kind " + kind->Word +
                              " with its shared sections" + with + "; at most " +
                              std::to_string(kind->Limit) + " work");
        }
    }

    /// Takes note of how many elements there are beside those of the page's sections.
    void Allow(const string& page, const KindCounts& counts) {
        for (const string& section : PageSections(page)) {
            KindCounts& most = most_[LowerCased(section)];
            for (const auto& [kind, count] : counts) most[kind] = std::max(most[kind], count);
        }
    }

    /// Texts that name an element by a number which no page with their section reaches.
    void CheckNamedElements(const SectionFacts& facts, const KindCounts& most) {
        for (const NamedElement& named : facts.Named) {
            const int count = CountOf(most, named.Kind);
            if (named.Number < count) continue;
            const string kind = LowerCased(named.Kind->Word);
            findings_.Add(named.Section, named.Key,
                          "there is no " + kind + " " + std::to_string(named.Number) +
                              ": the page has at most " + std::to_string(count) +
                              ", shared sections and a box included, and the first is number 0");
        }
    }

    /// Keys of a page in a section that is none.
    void CheckSharedOnly(const string& section) {
        for (const string& name : ProfileKeys(basGlobal.SkinFile, section)) {
            const auto keys = PageKeys();
            if (std::any_of(keys.begin(), keys.end(), [&name](const SectionKey& key) {
                    return NumberInKey(key.Name, name).has_value();
                }))
                findings_.Add(section, name,
                              "is not read: the section is shared by pages and no page itself");
        }
    }

    /// The elements of a box come on top of those of the page beneath.
    void CheckBoxOver(const string& page, const string& box, const KindCounts& pageCounts) {
        KindCounts boxCounts;
        for (const string& section : PageSections(box)) {
            for (const auto& [kind, count] : FactsOf(section).Counts) boxCounts[kind] += count;
        }
        KindCounts both = pageCounts;
        for (const auto& [kind, count] : boxCounts) both[kind] += count;
        Allow(page, both);
        Allow(box, both);
        // What is too much already without the other is told there.
        KindCounts sum;
        for (const auto& [kind, count] : boxCounts) {
            const int beneath = CountOf(pageCounts, kind);
            if (beneath <= kind->Limit && count > 0 && count <= kind->Limit)
                sum[kind] = beneath + count;
        }
        CheckLimits(box, sum, " and the page \"" + page + "\" beneath");
    }

    /// A box that no touch on a button closes.
    void CheckWayOut(const string& box) {
        if (!boxes_.insert(LowerCased(box)).second) return;
        for (const string& section : PageSections(box)) {
            if (FactsOf(section).LeavesBox) return;
        }
        findings_.Add(box, "",
                      "no button closes this box: closebox, exit, openbox_... or openmenu_...");
    }

    /// The sections that nothing leads to. A shared section of such a page is told with the page.
    std::vector<string> Unreached() const {
        std::set<string> named = named_;
        for (const string& section : order_) {
            for (const string& shared : PageSections(section)) {
                if (!EqualsNoCase(shared, section)) named.insert(LowerCased(shared));
            }
        }
        std::vector<string> unreached;
        for (const string& section : order_) {
            const string name = LowerCased(section);
            if (!pages_.contains(name) && !named.contains(name) && !IsMessage(section) &&
                !EqualsNoCase(section, kGeneral))
                unreached.push_back(section);
        }
        return unreached;
    }

    SkinFindings& findings_;
    std::vector<string> order_;  ///< sections as the file has them
    std::set<string> sections_;  ///< the same in lower case
    std::vector<string> menus_;
    std::set<string> pages_;  ///< reached, in lower case
    std::set<string> named_;  ///< shared sections of reached pages
    std::set<string> boxes_;  ///< pages that are opened as a box, in lower case
    std::deque<string> waiting_;
    std::map<string, SectionFacts> facts_;
    std::map<string, KindCounts> most_;  ///< elements on the fullest page with that section
};

}  // namespace

std::vector<SkinError> CheckSkin() {
    SkinFindings findings;
    findings.CheckLines();
    findings.CheckGeneral();
    PageWalk(findings).Run();
    return findings.Sorted();
}

}  // namespace dravik
