#include "skin/message/frWarning.h"

#include <QKeyEvent>
#include <QPainter>
#include <QtMath>
#include <algorithm>
#include <utility>
#include <vector>

#include "controls/ButtonEx.h"
#include "core/basGlobal.h"
#include "platform/Text.h"
#include "settings/Words.h"
#include "skin/SkinFile.h"
#include "skin/SkinScreen.h"
#include "skin/SkinVocabulary.h"
#include "skin/basSkin.h"
#include "skin/kinds/KindParts.h"
#include "skin/message/ShowMessage.h"
#include "skinfunc/basValueProc.h"

namespace dravik {

namespace {

constexpr int kCloseAfter = 30000;  // milliseconds until an unanswered question counts as no

// The plain look, in pixels at its own scale.
constexpr QSize kPlainSize(560, 260);  // the height grows with the text
constexpr int kPlainRoom = 8;          // beside the box, at least
constexpr int kPlainGap = 24;          // between two buttons
constexpr QSize kPlainButton(160, 64);
constexpr int kPlainMargin = 28;
constexpr QColor kPlainBack(24, 28, 34);
constexpr QColor kPlainLightBack(226, 230, 236);  // under a dark text of the skin
constexpr QColor kPlainEdges[] = {QColor(226, 86, 66), QColor(86, 156, 214), QColor(86, 156, 214)};
constexpr int kPlainPoints = 15;
constexpr int kWhite = 0xFFFFFF;

SkinPicture PlainButtonPicture(QColor fill, QSize size, double scale) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(120, 130, 145), 2));
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(image.rect()).adjusted(1, 1, -1, -1), 10, 10);
    return MakeSkinPicture(image, scale);
}

void CaptionFromSkin(ButtonEx* button, const SkinElement& keys) {
    if (keys.LabelFunction.empty()) return;
    std::string function = keys.LabelFunction;
    TextLook look;
    SetFontStyle(look, keys.LabelFontStyle);
    button->SetLabelX(keys.LabelX);
    button->SetLabelY(keys.LabelY);
    button->SetLabelWidth(keys.LabelWidth);
    button->SetLabelHeight(keys.LabelHeight);
    button->SetLabelAlignment(keys.LabelAlignment);
    button->SetLabelFontSize(keys.LabelFontSize);
    button->SetLabelFont(keys.LabelFont);
    button->SetLabelStyle(look.Bold, look.Italic);
    button->SetLabelForecolor(std::to_string(keys.LabelColor));
    button->SetLabelCaption(LabelText(function));
}

/// A message in the driver's language, line by line.
std::string MessageInWords(const std::string& message) {
    constexpr std::string_view kLineEnd = "\r\n";
    std::string shown;
    for (std::size_t at = 0;;) {
        const std::size_t end = std::min(message.find(kLineEnd, at), message.size());
        shown += WordByPattern(std::string_view(message).substr(at, end - at), kChartSavedText);
        if (end == message.size()) return shown;
        shown += kLineEnd;
        at = end + kLineEnd.size();
    }
}

}  // namespace

frWarning::frWarning(QWidget* window)
    : QWidget(window),
      buttons_{{{"Yes", kAnswerYes, new ButtonEx(this)},
                {"No", kAnswerNo, new ButtonEx(this)},
                {"OK", kAnswerOk, new ButtonEx(this)}}} {
    setAttribute(Qt::WA_NoMousePropagation);
    setFocusPolicy(Qt::StrongFocus);
    hide();
    Timer1_.setObjectName(QStringLiteral("Timer1"));
    Timer1_.setSingleShot(true);
    Timer1_.setInterval(kCloseAfter);
    QObject::connect(&Timer1_, &QTimer::timeout, this, [this] { Answer(kAnswerNo); });
    for (const AnswerButton& entry : buttons_) {
        entry.Button->Click = [this, answer = entry.Answer] { Answer(answer); };
        entry.Button->installEventFilter(this);
    }
}

void frWarning::Open(const std::string& message, int kind, double scale) {
    if (isHidden()) focusBefore_ = window()->focusWidget();
    kind_ = std::clamp(kind, 0, 2);
    message_ = message;
    pageScale_ = scale;
    pressSeen_ = pressed_ = false;
    if (CurrentScreen() != nullptr) CurrentScreen()->DropPresses();
    Arrange();
    Timer1_.start();
}

/// Puts everything in its place and shows it.
void frWarning::Arrange() {
    const std::string section = MessageSection(kind_);
    plain_ = !HasSkinSection(section);
    const bool inWords =
        plain_ || EqualsNoCase(ReadSkinValue(section, "Label0Function"), kMessageWord);
    translated_ = inWords ? MessageInWords(message_) : message_;
    scale_ = plain_ ? PlainScale(parentWidget()->size()) : pageScale_;
    for (const AnswerButton& entry : buttons_) {
        entry.Button->hide();
        entry.Button->SetScale(scale_);
        entry.Button->SetLabelCaption({});
    }
    if (plain_)
        ApplyPlainLook();
    else
        ApplySkin(section);
    fitted_ = FitText(dravik::ShownText(translated_), lWarning_.Pixels().size(), look_, scale_);
    setGeometry(parentWidget()->rect());
    show();
    raise();
    setFocus();
    update();
}

void frWarning::Answer(int answer) {
    Timer1_.stop();
    hide();
    if (focusBefore_ != nullptr && focusBefore_->isVisible())
        focusBefore_->setFocus();
    else if (CurrentScreen() != nullptr)
        CurrentScreen()->SetInitialFocus();  // another page has come meanwhile
    SetMessageAnswer(answer);
}

ButtonEx* frWarning::ShownButton(const std::string& name) const {
    for (const AnswerButton& entry : buttons_) {
        if (EqualsNoCase(name, entry.Name) && !entry.Button->isHidden()) return entry.Button;
    }
    return nullptr;
}

void frWarning::ApplySkin(const std::string& section) {
    const auto picture = [this](const std::string& name) {
        return LoadSkinPicture(PicturePath(name), scale_);
    };
    const SkinElement box = ReadSectionKeys(section, MessageKeys());
    imgWarning_ = picture(box.Background);
    dim_ = std::clamp(box.Dim, 0, 100);
    boxSize_ = imgWarning_.IsNull()
                   ? kPlainSize.boundedTo((QSizeF(parentWidget()->size()) / scale_).toSize())
                   : imgWarning_.DesignSize().toSize();
    look_ = {box.Font, double{1} * box.FontSize, box.Color, box.Alignment, false, false};
    // A text without a width or a height reaches to the edge of the box.
    const double x = box.X;
    const double y = box.Y;
    const double width = box.Width;
    const double height = box.Height;
    lWarning_ = {x, y, width > 0 ? width : std::max(boxSize_.width() - x, 0.0),
                 height > 0 ? height : std::max(boxSize_.height() - y, 0.0), scale_};

    for (int n = 0; n <= kLastAnswer; ++n) {
        const SkinElement button = ReadSectionKeys(section, MessageKeys(), n);
        for (const AnswerButton& entry : buttons_) {
            if (!EqualsNoCase(button.Function, entry.Name)) continue;
            entry.Button->SetSkinUp(picture(button.Up));
            entry.Button->SetSkinOver(picture(button.Over));
            entry.Button->SetSkinDown(picture(button.Down));
            CaptionFromSkin(entry.Button, button);
            PlaceButton(entry.Button, button.X, button.Y);
        }
    }
}

void frWarning::ApplyPlainLook() {
    imgWarning_ = {};
    dim_ = 0;
    look_ = {"", kPlainPoints, kWhite, 2, false, false};
    // The box is as high as its text needs, and no larger than the window.
    const QSize window = (QSizeF(parentWidget()->size()) / scale_).toSize();
    const QSize room = window - QSize(2 * kPlainRoom, 2 * kPlainRoom);
    const int width = std::min(kPlainSize.width(), room.width());
    const int beside = kPlainButton.height() + 3 * kPlainMargin;
    const double textWidth = width - 2 * kPlainMargin;
    const double needed =
        WrappedHeight(dravik::ShownText(translated_), SkinFont(look_, scale_), textWidth * scale_) /
        scale_;
    const int height = std::min(std::max(kPlainSize.height(), beside + qCeil(needed) + 1),
                                std::max(room.height(), beside));
    boxSize_ = QSize(width, height);
    lWarning_ = {kPlainMargin, kPlainMargin, textWidth, double{1} * (height - beside), scale_};

    const QSize size(std::min(kPlainButton.width(), (width - 2 * kPlainGap) / 2),
                     kPlainButton.height());
    const bool question = kind_ == 2;
    const int y = height - kPlainMargin - size.height();
    const int middle = width / 2;
    for (const AnswerButton& entry : buttons_) {
        if (question == (entry.Answer == kAnswerOk)) continue;
        ButtonEx* button = entry.Button;
        button->SetSkinUp(PlainButtonPicture(QColor(44, 52, 64), size, scale_));
        button->SetSkinOver(PlainButtonPicture(QColor(60, 72, 88), size, scale_));
        button->SetSkinDown(PlainButtonPicture(QColor(30, 36, 44), size, scale_));
        button->SetLabelX(0);
        button->SetLabelY(18);
        button->SetLabelWidth(size.width());
        button->SetLabelHeight(0);
        button->SetLabelFontSize(kPlainPoints);
        button->SetLabelForecolor(std::to_string(kWhite));
        button->SetLabelAlignment(2);
        button->SetLabelCaption(Word(entry.Name));
        const int left = !question                    ? middle - size.width() / 2
                         : entry.Answer == kAnswerYes ? middle - size.width() - kPlainGap / 2
                                                      : middle + kPlainGap / 2;
        PlaceButton(button, left, y);
    }
}

void frWarning::PlaceButton(ButtonEx* button, int x, int y) {
    // Buttons are children of the whole cover, so they move with the box.
    constexpr int kFarAway = 1 << 20;
    const QPoint corner = BoxCorner();
    button->MoveTo(corner.x() + std::clamp(x, -kFarAway, kFarAway),
                   corner.y() + std::clamp(y, -kFarAway, kFarAway));
    button->show();
}

/// In whole design pixels, so that box and buttons are rounded alike.
QPoint frWarning::BoxCorner() const {
    const QSizeF rest = QSizeF(parentWidget()->size()) / scale_ - QSizeF(boxSize_);
    return {qRound(rest.width() / 2), qRound(rest.height() / 2)};
}

QRect frWarning::BoxRect() const {
    const QPoint corner = BoxCorner();
    return DesignBox{static_cast<double>(corner.x()), static_cast<double>(corner.y()),
                     static_cast<double>(boxSize_.width()), static_cast<double>(boxSize_.height()),
                     scale_}
        .Pixels();
}

QRect frWarning::TextArea() const {
    return lWarning_.Pixels().translated(BoxRect().topLeft());
}

void frWarning::Layout(QSize window, double scale) {
    const bool moved = window != size() || scale != pageScale_;
    setGeometry(QRect(QPoint(0, 0), window));
    if (!moved || isHidden()) return;
    pageScale_ = scale;
    Arrange();
}

void frWarning::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), QColor(0, 0, 0, dim_ * 255 / 100));
    const QRect box = BoxRect();
    if (plain_ || imgWarning_.IsNull()) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(kPlainEdges[kind_], 3));
        const bool darkText = qGray(SkinColor(look_.Color).rgb()) < 128;
        painter.setBrush(darkText ? kPlainLightBack : kPlainBack);
        painter.drawRoundedRect(QRectF(box).adjusted(2, 2, -2, -2), 12, 12);
    } else {
        PaintPicture(painter, box, imgWarning_);
    }
    painter.setPen(SkinColor(look_.Color));
    PaintFitted(painter, TextArea(), fitted_, SkinAlignment(look_.Alignment));
}

bool frWarning::eventFilter(QObject* button, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress) pressSeen_ = true;
    if (event->type() == QEvent::MouseButtonDblClick && !pressSeen_) return true;
    return QWidget::eventFilter(button, event);
}

void frWarning::mousePressEvent(QMouseEvent*) {
    pressSeen_ = pressed_ = true;
}

void frWarning::mouseDoubleClickEvent(QMouseEvent*) {
    pressed_ = pressSeen_;
}

void frWarning::mouseReleaseEvent(QMouseEvent* event) {
    if (!std::exchange(pressed_, false)) return;
    if (BoxRect().contains(event->position().toPoint())) Answer(kAnswerNo);
}

void frWarning::keyPressEvent(QKeyEvent* event) {
    if (event->isAutoRepeat()) return;  // a key that opened the message may still be held
    switch (event->key()) {
        case Qt::Key_Escape:
            Answer(kAnswerNo);
            break;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (ShownButton("ok") != nullptr) {
                Answer(kAnswerOk);
            } else if (const auto* focused = dynamic_cast<ButtonEx*>(focusWidget())) {
                if (focused->Click) focused->Click();
            }
            break;
        case Qt::Key_Left:
            focusNextPrevChild(false);
            break;
        case Qt::Key_Right:
            focusNextPrevChild(true);
            break;
        default:
            // No other key may reach the page beneath; only the program's own, such as Ctrl+Q.
            event->setAccepted((event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == 0);
    }
}

/// From one answer to the next, round and round.
bool frWarning::focusNextPrevChild(bool next) {
    std::vector<ButtonEx*> shown;
    for (const AnswerButton& entry : buttons_) {
        if (!entry.Button->isHidden()) shown.push_back(entry.Button);
    }
    if (shown.empty()) return true;
    const auto focused = std::find_if(shown.begin(), shown.end(),
                                      [](ButtonEx* button) { return button->hasFocus(); });
    std::size_t index = static_cast<std::size_t>(focused - shown.begin());
    if (focused == shown.end())
        index = next ? 0 : shown.size() - 1;
    else
        index = (index + (next ? 1 : shown.size() - 1)) % shown.size();
    shown[index]->setFocus(Qt::TabFocusReason);
    return true;
}

}  // namespace dravik
