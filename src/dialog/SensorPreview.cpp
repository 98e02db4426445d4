#include "dialog/SensorPreview.h"

#include <QLocale>
#include <cmath>

namespace dravik {

namespace {

constexpr int kDigits = 15;  // significant digits of the general number format

std::optional<double> LocaleNumber(const std::string& text) {
    bool converted = false;
    const double number = QLocale().toDouble(QString::fromStdString(text), &converted);
    if (!converted || !std::isfinite(number)) return std::nullopt;
    return number;
}

std::string LocaleText(double number) {
    QLocale locale;
    locale.setNumberOptions(QLocale::OmitGroupSeparator | QLocale::OmitLeadingZeroInExponent);
    return locale.toString(number, 'G', kDigits).toStdString();
}

}  // namespace

std::optional<std::string> PreviewOutput(const std::string& raw, const std::string& factor,
                                         const std::string& offset, const std::string& unit) {
    const auto rawNumber = LocaleNumber(raw);
    const auto factorNumber = LocaleNumber(factor);
    const auto offsetNumber = LocaleNumber(offset);
    if (!rawNumber || !factorNumber || !offsetNumber) return std::nullopt;
    const double output = *rawNumber * *factorNumber + *offsetNumber;
    if (!std::isfinite(output)) return std::nullopt;
    return LocaleText(output) + unit;
}

}  // namespace dravik
