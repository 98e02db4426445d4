#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/frMain.h"
#include "controls/ButtonEx.h"
#include "controls/PictureCache.h"
#include "controls/SkinList.h"
#include "controls/SkinTextbox.h"
#include "controls/Slider.h"
#include "core/basGlobal.h"
#include "platform/Pointer.h"
#include "platform/Text.h"
#include "skin/PageCanvas.h"
#include "skin/Selection.h"
#include "skin/SkinFile.h"
#include "skin/SkinScreen.h"
#include "skin/basSkin.h"
#include "skin/message/ShowMessage.h"
#include "skin/message/frWarning.h"
#include "skinfunc/basValueProc.h"
#include "support/SavePicture.h"
#include "support/TemporaryFolder.h"
#include "support/Waiting.h"

namespace dravik {

/// Answers every message that opens while it lives, and notes what they say.
class Answers : public QTimer {
 public:
    explicit Answers(int answer = kAnswerOk) {
        callOnTimeout([this, answer] {
            if (!MessageDialog()->IsOpen()) return;
            texts.push_back(MessageDialog()->Message());
            MessageDialog()->Answer(answer);
        });
        start(0);
    }
    std::vector<std::string> texts;
};

/// The real main window on a skin that the test writes, with real pictures. Its timers stand still:
/// a test refreshes when it wants to.
class SkinTest : public ::testing::Test {
 protected:
    ~SkinTest() override {
        window.reset();
        ForgetPointerOverride();
        basGlobal = GlobalState{};
    }

    static std::string PictureName(const std::string& name) { return "skins/pics/" + name; }

    void Picture(const std::string& name, int width, int height, const QColor& color) const {
        SavePicture(folder.Write(PictureName(name), ""), width, height, color);
    }

    /// @param skin  keys of the section General, then the other sections
    void WriteSkin(const std::string& skin) const {
        folder.Write("skins/test.ini", "[General]\nImagefolder=pics\n" + skin);
    }

    void Start(const std::string& skin, QSize size = QSize(800, 480),
               const std::string& settings = "") {
        WriteSkin(skin);
        folder.Write("Dravik.ini", "[Options]\nSkin=test\n" + settings);
        Picture("b64.png", 64, 64, Qt::blue);
        basGlobal = GlobalState{};
        window = std::make_unique<frMain>();
        basGlobal.tiStartup.SetInterval(1);
        const Answers answers;
        window->Start({folder.Path(), {}, true, size});
        errors = answers.texts;
        for (FormTimer* timer : {&basGlobal.tiMain, &basGlobal.tiAux, &basGlobal.tiHardware})
            timer->SetEnabled(false);
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }

    /// Loads a page or a box. @return the messages that it showed
    static std::vector<std::string> Load(const std::string& name, bool box = false) {
        const Answers answers;
        LoadSkinPage(name, box);
        return answers.texts;
    }

    /// The deferred pass, by its own timer.
    static void Finish() {
        ASSERT_TRUE(Until([] { return !basGlobal.tiSkinReload.Enabled(); }));
    }

    SkinScreen& Screen() const { return window->Screen(); }
    int Count(const SkinKind& kind) const { return Screen().Count(kind); }
    void Refresh() const { RefreshScreen(Screen()); }
    const ScreenElement& Element(const SkinKind& kind, int index) const {
        return Screen().Elements(kind).at(static_cast<std::size_t>(index));
    }
    template <typename T>
    T& Control(const SkinKind& kind, int index) const {
        return dynamic_cast<T&>(*Screen().Control(kind, index));
    }
    ButtonEx& Button(int index) const { return Control<ButtonEx>(kButtonKind, index); }
    Slider& SliderAt(int index) const { return Control<Slider>(kSliderKind, index); }
    Slider& Bargraph(int index) const { return Control<Slider>(KindOf("Bargraph"), index); }
    SkinList& List(int index) const { return Control<SkinList>(kListKind, index); }
    SkinTextbox& Textbox(int index) const { return Control<SkinTextbox>(kTextboxKind, index); }
    static const SkinKind& KindOf(const std::string& word) {
        for (const SkinKind* kind : SkinKinds()) {
            if (kind->Word == word) return *kind;
        }
        throw std::out_of_range(word);
    }
    std::string LabelShown(int index) const {
        const auto& labels = Screen().Elements(kLabelKind);
        const auto place = static_cast<std::size_t>(index);
        return place < labels.size() ? ToUtf8(labels[place].Shown) : "(none)";
    }
    QColor Pixel(int x, int y) const { return window->grab().toImage().pixelColor(x, y); }

    // Real input, through the window system's queue.
    void Move(int x, int y) const {
        OverridePointer(window->mapToGlobal(QPoint(0, 0)).x() + x,
                        window->mapToGlobal(QPoint(0, 0)).y() + y);
        QTest::mouseMove(window->windowHandle(), QPoint(x, y));
    }
    void Press(int x, int y) const {
        Move(x, y);
        QTest::mousePress(window->windowHandle(), Qt::LeftButton, {}, QPoint(x, y));
    }
    void Release(int x, int y) const {
        Move(x, y);
        QTest::mouseRelease(window->windowHandle(), Qt::LeftButton, {}, QPoint(x, y));
        QTest::qWait(0);
    }
    void Click(int x, int y) const {
        Press(x, y);
        Release(x, y);
    }
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const {
        QTest::keyClick(window->windowHandle(), key, modifiers);
    }

    TemporaryFolder folder;
    std::unique_ptr<frMain> window;
    std::vector<std::string> errors;  ///< messages during Start
};

/// Buttons of 64 x 64 pixels, each with a command and a place.
struct PlacedButton {
    std::string Function;
    int X, Y;
};
inline std::string ButtonKeys(const std::vector<PlacedButton>& buttons) {
    std::string text;
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        const std::string prefix = "Button" + std::to_string(i);
        text += prefix + "Function=" + buttons[i].Function + "\n" + prefix + "Up=b64.png\n" +
                prefix + "X=" + std::to_string(buttons[i].X) + "\n" + prefix +
                "Y=" + std::to_string(buttons[i].Y) + "\n";
    }
    return text;
}

/// `count` elements of a kind that need nothing but a function, and further keys of each.
inline std::string Repeated(const std::string& kind, int count, const std::string& function,
                            const std::vector<std::string>& keys = {}) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        const std::string prefix = kind + std::to_string(i);
        text += prefix + "Function=" + function + "\n";
        for (const std::string& key : keys) text += prefix + key + "\n";
    }
    return text;
}

}  // namespace dravik
