#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTimer>
#include <QWidget>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "controls/ButtonEx.h"
#include "core/basGlobal.h"
#include "lists/basFunctions.h"
#include "platform/ProcessStart.h"
#include "platform/Text.h"
#include "skin/message/frWarning.h"
#include "support/TemporaryFolder.h"

namespace dravik {

/// Media lists on real folders, with a real message box whose "OK" is pressed as soon as it shows,
/// and a player that only writes down what it is given.
class MediaTest : public ::testing::Test {
 protected:
    static constexpr int kGallery = 1;
    static constexpr int kPlaylist = 2;
    static constexpr int kMedia = 3;

    MediaTest() : home_(std::getenv("HOME")), dialog_(&window_) {
        ::setenv("HOME", (folder_ / "home").c_str(), 1);
        for (const char* part : {"home", "music", "program/skins/night"})
            std::filesystem::create_directories(folder_ / part);
        basGlobal = GlobalState{};
        InitGlobals(folder_ / "program");
        basGlobal.ImageFolder = folder_ / "program/skins/night/";
        basGlobal.CurrentList = kMedia;
        InitMessages(&dialog_);
        QObject::connect(&answer_, &QTimer::timeout, &dialog_, [this] {
            if (!dialog_.IsOpen()) return;
            messages_.push_back(dialog_.Message());
            dialog_.ShownButton("ok")->Click();
        });
        answer_.start(1);
        PlayMedium = [this](const std::string& file) {
            played_.push_back(file);
            return playerStarts_;
        };
    }
    ~MediaTest() override {
        PlayMedium = OpenWithSystem;
        InitMessages(nullptr);
        basGlobal = GlobalState{};
        ::setenv("HOME", home_.c_str(), 1);
        std::filesystem::remove_all(folder_ / "music");  // Qt could not remove names of any bytes
    }

    static ListSlot& List(int slot) { return basGlobal.Lists[static_cast<std::size_t>(slot)]; }
    static ListSlot& Media() { return List(kMedia); }

    /// The entries of a list as "text|picture|tag", the test's own folder written as "~".
    std::vector<std::string> Lines(int slot = kMedia) const {
        std::vector<std::string> lines;
        for (const ListEntry& entry : List(slot).Entries)
            lines.push_back(ReplaceAll(entry.Text + "|" + entry.Picture + "|" + entry.Tag,
                                       folder_.Path(), "~"));
        return lines;
    }
    static std::vector<std::string> Texts(int slot = kMedia) {
        std::vector<std::string> texts;
        for (const ListEntry& entry : List(slot).Entries) texts.push_back(entry.Text);
        return texts;
    }

    static void Select(const std::string& text) {
        const std::vector<std::string> texts = Texts();
        const auto found = std::find(texts.begin(), texts.end(), text);
        ASSERT_NE(found, texts.end()) << text;
        SelectListEntry(Media(), static_cast<int>(found - texts.begin()) + 1);
    }
    static void Activate(const std::string& text) {
        Select(text);
        ActivateListEntry(kMedia);
    }
    static std::string SelectedText() {
        return Media().Selected < 1
                   ? "(none)"
                   : Media().Entries[static_cast<std::size_t>(Media().Selected) - 1].Text;
    }

    const TemporaryFolder folder_;
    std::string home_;
    QWidget window_;
    frWarning dialog_;
    QTimer answer_;
    std::vector<std::string> messages_;  ///< texts of the message boxes
    std::vector<std::string> played_;    ///< files given to the player
    bool playerStarts_ = true;
};

}  // namespace dravik
