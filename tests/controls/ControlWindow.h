#pragma once

#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <QPixmap>
#include <QTest>
#include <QWidget>
#include <QWindow>

#include "controls/PictureCache.h"
#include "platform/Pointer.h"
#include "support/PaintWatch.h"
#include "support/Waiting.h"

namespace dravik {

/// A picture of one colour.
inline SkinPicture Plain(int width, int height, const QColor& color) {
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return MakeSkinPicture(image, 1);
}

/// A window on white ground, and a pointer whose every event goes through the window system's
/// queue, so that focus, grabs and double clicks are those of the real thing.
class ControlWindow : public QWidget {
 public:
    ControlWindow() {
        resize(400, 300);
        QPalette colors = palette();
        colors.setColor(QPalette::Window, Qt::white);
        setPalette(colors);
    }
    ~ControlWindow() override {
        // A press that is never released would make the next test's first press a double click.
        if (held_ != Qt::NoButton) Release(0, 0, held_);
        ForgetPointerOverride();
    }

    void Show() {
        setFocusPolicy(Qt::StrongFocus);
        show();
        activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(this));
        setFocus();
    }

    void Move(int x, int y) {
        Note(x, y);
        QTest::mouseMove(windowHandle(), QPoint(x, y));
    }
    void Press(int x, int y, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = {}) {
        Note(x, y);
        held_ = button;
        QTest::mousePress(windowHandle(), button, modifiers, QPoint(x, y));
    }
    void Release(int x, int y, Qt::MouseButton button = Qt::LeftButton) {
        Note(x, y);
        held_ = Qt::NoButton;
        QTest::mouseRelease(windowHandle(), button, {}, QPoint(x, y));
    }
    void Click(int x, int y) {
        Press(x, y);
        Release(x, y);
    }
    void DoubleClick(int x, int y) {
        Note(x, y);
        QTest::mouseDClick(windowHandle(), Qt::LeftButton, {}, QPoint(x, y));
    }

    /// The pointer is elsewhere now, and no event tells of it.
    void Vanish() { OverridePointer(-1000, -1000); }

    QColor Pixel(int x, int y) { return grab().toImage().pixelColor(x, y); }

    int keys = 0;

 protected:
    void keyPressEvent(QKeyEvent*) override { ++keys; }

 private:
    void Note(int x, int y) {
        const QPoint screen = mapToGlobal(QPoint(x, y));
        OverridePointer(screen.x(), screen.y());
    }

    Qt::MouseButton held_ = Qt::NoButton;
};

}  // namespace dravik
