#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMouseEvent>
#include <QPointer>
#include <QStyleHints>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "console/ConsoleRequests.h"
#include "controls/ButtonEx.h"
#include "platform/Number.h"
#include "platform/Pointer.h"
#include "platform/Text.h"
#include "skin/message/frWarning.h"

namespace dravik {

namespace {

constexpr int kWheelNotch = 120;  // eighths of a degree
constexpr int kMostNotches = 1000;
constexpr int kFarthest = 32'767;  // pixels from the window's corner, as on the widest display

/// The pointer as the synthetic input has left it.
struct SyntheticPointer {
    QPoint Position;  ///< within the window on top
    bool Held = false;
    QPoint LastPress;
    QElapsedTimer SincePress;
    bool LastWasDouble = false;
};
SyntheticPointer pointer;

/// Where an event at a position of the window on top goes: a drop-down list that is open over it
/// takes the pointer and the keys.
QWidget* TargetWindow() {
    QWidget* popup = QApplication::activePopupWidget();
    return popup != nullptr ? popup : WindowOnTop();
}

/// So many numbers, each taken as the nearest that is no farther from 0 than `limit`.
std::optional<std::vector<int>> Numbers(std::string_view text, std::size_t count, int limit) {
    std::vector<int> numbers;
    while (!(text = Trimmed(text)).empty()) {
        const std::optional<int> number = TakeNumber(text);
        if (!number) return std::nullopt;
        numbers.push_back(std::clamp(*number, -limit, limit));
    }
    if (numbers.size() != count) return std::nullopt;
    return numbers;
}

/// A mouse event that can be the press of a double click. The window takes such a press as the
/// start of its grab without telling the widget, which is told of the double click itself.
class PointerEvent : public QMouseEvent {
 public:
    using QMouseEvent::QMouseEvent;
    void SetOfDoubleClick() { m_doubleClick = true; }
};

/// Hands an event to the window as the system would: the window finds the widget beneath the
/// pointer, keeps the grab of a held button and tells entering and leaving.
void SendMouse(QEvent::Type type, QPoint position, Qt::MouseButton button,
               bool ofDoubleClick = false) {
    QWidget* window = TargetWindow();
    const QPoint global = WindowOnTop()->mapToGlobal(position);
    OverridePointer(global.x(), global.y());
    pointer.Position = position;
    PointerEvent event(type, QPointF(window->mapFromGlobal(global)), QPointF(global), button,
                       pointer.Held ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    if (ofDoubleClick) event.SetOfDoubleClick();
    QCoreApplication::sendEvent(window->windowHandle(), &event);
}

void Move(QPoint position) {
    SendMouse(QEvent::MouseMove, position, Qt::NoButton);
}

/// Two presses close to each other in time and place are a double click, as with a real pointer.
bool IsSecondPress(QPoint position) {
    const QStyleHints* hints = QGuiApplication::styleHints();
    return !pointer.LastWasDouble && pointer.SincePress.isValid() &&
           pointer.SincePress.elapsed() < hints->mouseDoubleClickInterval() &&
           (position - pointer.LastPress).manhattanLength() <= hints->mouseDoubleClickDistance();
}

void Press(QPoint position) {
    Move(position);
    const bool second = IsSecondPress(position);
    pointer.Held = true;
    pointer.LastPress = position;
    pointer.LastWasDouble = second;
    pointer.SincePress.start();
    SendMouse(QEvent::MouseButtonPress, position, Qt::LeftButton, second);
    if (second) SendMouse(QEvent::MouseButtonDblClick, position, Qt::LeftButton);
}

void Release(QPoint position) {
    if (pointer.Held && position != pointer.Position) Move(position);
    pointer.Held = false;
    SendMouse(QEvent::MouseButtonRelease, position, Qt::LeftButton);
}

void Click(QPoint position) {
    Press(position);
    Release(position);
}

/// A request with a position, carried out by `act`.
std::string AtPosition(std::string_view arguments, const char* word, void (*act)(QPoint)) {
    const auto position = Numbers(arguments, 2, kFarthest);
    if (!position) return std::string("error: ") + word + " takes X and Y";
    act(QPoint((*position)[0], (*position)[1]));
    return "ok";
}

}  // namespace

std::string InputClick(std::string_view arguments) {
    const std::string name(Trimmed(arguments));
    if (name != "yes" && name != "no" && name != "ok") return AtPosition(name, "click", Click);

    const frWarning* dialog = MessageDialog();
    if (dialog == nullptr || !dialog->IsOpen()) return "error: no message is open";
    const ButtonEx* button = dialog->ShownButton(name);
    if (button == nullptr) return "error: the message has no such button: " + name;
    // An answer by name is never the second half of a double click.
    pointer.SincePress.invalidate();
    Click(button->mapTo(button->window(), button->rect().center()));
    return "ok";
}

std::string InputPress(std::string_view arguments) {
    return AtPosition(arguments, "press", Press);
}

std::string InputMove(std::string_view arguments) {
    return AtPosition(arguments, "move", Move);
}

std::string InputRelease(std::string_view arguments) {
    return AtPosition(arguments, "release", Release);
}

std::string InputWheel(std::string_view arguments) {
    const auto notches = Numbers(arguments, 1, kMostNotches);
    if (!notches) return "error: wheel takes a number of notches";
    const QPoint global = WindowOnTop()->mapToGlobal(pointer.Position);
    QWidget* window = TargetWindow();
    QWidget* beneath = window->childAt(window->mapFromGlobal(global));
    // A made-up turn is not handed on from widget to widget as a real one is.
    for (QPointer<QWidget> widget = beneath == nullptr ? window : beneath; widget != nullptr;
         widget = widget->parentWidget()) {
        QWheelEvent event(QPointF(widget->mapFromGlobal(global)), QPointF(global), QPoint(),
                          QPoint(0, (*notches)[0] * kWheelNotch), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(widget, &event);
        if (event.isAccepted() || widget == nullptr || widget->isWindow()) break;
    }
    return "ok";
}

std::string InputKey(std::string_view arguments) {
    const std::string name(Trimmed(arguments));
    const QKeySequence keys = QKeySequence::fromString(QString::fromStdString(name));
    if (keys.count() != 1 || keys[0].key() == Qt::Key_unknown) return "error: unknown key: " + name;
    const Qt::Key key = keys[0].key();
    const Qt::KeyboardModifiers modifiers = keys[0].keyboardModifiers();
    const bool types = name.size() == 1 && modifiers == Qt::NoModifier;
    const QString text = types ? QString::fromStdString(name) : QString();
    // Keys go to the active window, and the system may have yet to make one of a new dialog.
    QApplication::setActiveWindow(WindowOnTop());
    const QPointer<QWindow> window = TargetWindow()->windowHandle();
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    QCoreApplication::sendEvent(window, &press);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
    if (window != nullptr) QCoreApplication::sendEvent(window, &release);
    return "ok";
}

}  // namespace dravik
