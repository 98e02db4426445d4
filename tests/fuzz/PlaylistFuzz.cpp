#include "FuzzTarget.h"
#include "lists/basFunctions.h"
#include "skinfunc/basValueProc.h"
#include "support/FakeScreen.h"

namespace dravik::fuzz {
namespace {

constexpr int kMediaSlot = 3;
constexpr int kMostEntries = 20;

void RequireMedium(const std::string& file) {
    Require(!file.empty(), "what is played has a name");
    for (const char* program : {"exe", "sh", "desktop", "bat", ""})
        Require(FileExtension(file) != program || file.find("://") != std::string::npos,
                "a playlist leads to media only", file);
}

}  // namespace

void Run(std::string_view input) {
    basGlobal = GlobalState{};
    InstallFakeScreen();
    InitGlobals(Folder().Path());
    basGlobal.CurrentList = kMediaSlot;
    PlayMedium = [](const std::string& file) {
        RequireMedium(file);
        return file.size() % 2 == 0;
    };
    ListSlot& list = basGlobal.Lists[kMediaSlot];
    for (const char* name : {"music/list.pls", "music/list.m3u"}) {
        WriteFile(name, input);
        ShowFolder(kMediaSlot, "pls,mp3,", Folder() / "music");
        Require(ShowPlaylist(kMediaSlot, Folder() / name), "any file is a playlist");
        Require(!list.Entries.empty(), "there is a way up");
        for (int index = 2; index <= static_cast<int>(list.Entries.size()) && index < kMostEntries;
             ++index) {
            SelectListEntry(list, index);
            ActivateListEntry(kMediaSlot);
            for (const char* label : {"currentfolder", "listentry_0", "indexlabel"}) {
                std::string function = label;
                LabelText(function);
            }
        }
        OpenParentFolder(kMediaSlot);
    }
}

}  // namespace dravik::fuzz
