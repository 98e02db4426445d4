#include "dialog/StepField.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <algorithm>
#include <cmath>

#include "dialog/DialogControls.h"
#include "dialog/SettingsLook.h"

namespace dravik {

namespace {

constexpr int kButtonWidth = 38;
constexpr int kNarrowest = 56;
constexpr int kRepeatAfter = 400;  // milliseconds
constexpr int kRepeatEvery = 100;
constexpr int kMostDecimals = 15;
constexpr double kLargest = 1e12;

int DecimalPlaces(const QString& plain) {
    const auto point = plain.indexOf(QLatin1Char('.'));
    return point < 0 ? 0 : static_cast<int>(plain.size() - point - 1);
}

double Next(double number, double step, bool up) {
    if (step <= 1) return up ? number + step : number - step;
    return up ? (std::floor(number / step) + 1) * step : (std::ceil(number / step) - 1) * step;
}

}  // namespace

QString Stepped(const QString& text, const NumberSteps& steps, bool up) {
    const bool comma = text.contains(QLatin1Char(','));
    QString plain = text.trimmed().replace(QLatin1Char(','), QLatin1Char('.'));
    bool isNumber = false;
    double number = plain.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(number)) {
        number = 0;
        plain.clear();
    }
    if (std::abs(number) > kLargest) return text;  // a step would change nothing
    const double next = Next(number, steps.Step, up);
    const bool below = steps.Lowest && next < *steps.Lowest;
    if (below && steps.OrNothing) return {};
    const bool exponent = plain.contains(QLatin1Char('e'), Qt::CaseInsensitive);
    const int decimals = std::min(
        std::max(DecimalPlaces(plain), DecimalPlaces(QString::number(steps.Step))), kMostDecimals);
    // Without what little the arithmetic adds: "0,3" and not "0,30000000000000004", never "-0".
    const double scale = std::pow(10.0, decimals);
    const double rounded = std::round((below ? *steps.Lowest : next) * scale) / scale + 0.0;
    QString stepped = exponent ? QString::number(next, 'g', kMostDecimals)
                               : QString::number(rounded, 'f', decimals);
    const bool point = plain.contains(QLatin1Char('.')) && !comma;
    if (comma || (!point && QLocale().decimalPoint() == QLatin1String(",")))
        stepped.replace(QLatin1Char('.'), QLatin1Char(','));
    return stepped;
}

StepField::StepField(const char* name, const NumberSteps& steps)
    : field_(MakeField(name)), steps_(steps) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Px(2));
    row->addWidget(field_, 1);
    AddButton("Less", QStringLiteral("\u2212"), false);
    AddButton("More", QStringLiteral("+"), true);
    field_->setMinimumWidth(Px(kNarrowest));
    field_->installEventFilter(this);
}

void StepField::AddButton(const char* ending, const QString& text, bool up) {
    const QString name = field_->objectName() + QLatin1String(ending);
    QPushButton* button = MakeButton(name.toLatin1().constData(), text);
    button->setProperty("step", true);
    button->setFixedWidth(Px(kButtonWidth));
    button->setFocusPolicy(Qt::NoFocus);  // the keys of the field do the same
    button->setAutoRepeat(true);
    button->setAutoRepeatDelay(kRepeatAfter);
    button->setAutoRepeatInterval(kRepeatEvery);
    QObject::connect(button, &QPushButton::clicked, this, [this, up] { Step(up); });
    layout()->addWidget(button);
}

void StepField::Step(bool up) {
    field_->setText(Stepped(field_->text(), steps_, up));
}

bool StepField::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down) {
            Step(key == Qt::Key_Up);
            return true;
        }
    }
    return QWidget::eventFilter(object, event);
}

}  // namespace dravik
