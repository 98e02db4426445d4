#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <array>
#include <optional>
#include <string>

#include "controls/DesignBox.h"
#include "controls/PictureCache.h"
#include "controls/SkinText.h"

namespace dravik {

class ButtonEx;

/// The message dialog: one small skinned box over the whole window. Its look comes from the skin's
/// sections "warning", "info" and "query", which may ask for the language of the user; where the
/// skin has no such section it is plain and sized by the window, so that no message is ever
/// invisible. A text that is too long for its place is set smaller.
class frWarning : public QWidget {
 public:
    /// Covers `window`; the box stands in its middle.
    explicit frWarning(QWidget* window);

    /// Fills and shows the dialog. @param kind 0 warning, 1 information, 2 question
    ///
    /// A press that is held is forgotten, and of a double click that began before, the second press
    /// is ignored: it was not meant for what has only just appeared.
    void Open(const std::string& message, int kind, double scale);

    /// Gives the answer (6, 7 or 1) and hides the dialog.
    void Answer(int answer);

    /// The page beneath is another one now: after the answer, the focus goes where that page has
    /// it.
    void ForgetFocus() { focusBefore_ = nullptr; }

    bool IsOpen() const { return !isHidden(); }
    int Kind() const { return kind_; }
    const std::string& Message() const { return message_; }

    /// The message as it is drawn, where, and in which font.
    const QString& ShownText() const { return fitted_.Text; }
    const QFont& ShownFont() const { return fitted_.Font; }
    QRect TextArea() const;

    /// The button of an answer when it is shown: "yes", "no" or "ok".
    ButtonEx* ShownButton(const std::string& name) const;

    /// Fits into a window of that size.
    void Layout(QSize window, double scale);

 protected:
    bool eventFilter(QObject* button, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool focusNextPrevChild(bool next) override;

 private:
    void Arrange();
    void ApplySkin(const std::string& section);
    void ApplyPlainLook();
    void PlaceButton(ButtonEx* button, int x, int y);
    QPoint BoxCorner() const;  ///< design pixels
    QRect BoxRect() const;

    struct AnswerButton {
        const char* Name;  ///< in a skin, and the caption in the plain look
        int Answer;
        ButtonEx* Button;
    };
    std::array<AnswerButton, 3> buttons_;  ///< cmdYes, cmdNo, cmdOK
    int dim_ = 0;                          ///< percent by which the page beneath is darkened
    SkinPicture imgWarning_;
    TextLook look_;
    DesignBox lWarning_;
    std::string message_;
    std::string translated_;  ///< the message in the words of the language, where it is shown so
    FittedText fitted_;       ///< the message as it fits into lWarning_
    QSize boxSize_;           ///< design pixels
    int kind_ = 0;
    double scale_ = 1;  ///< of the box: the page's, or the plain look's own
    double pageScale_ = 1;
    bool plain_ = false;
    bool pressSeen_ = false;  ///< a press has come since the dialog was opened
    bool pressed_ = false;    ///< on the box beside its buttons, and still held
    QPointer<QWidget> focusBefore_;
    QTimer Timer1_{this};
};

/// Gives ShowMessage the dialog to use (null: none).
void InitMessages(frWarning* dialog);

/// The dialog given to InitMessages.
frWarning* MessageDialog();

/// Sets the answer cell, which ends the wait of every open ShowMessage.
void SetMessageAnswer(int answer);

}  // namespace dravik
