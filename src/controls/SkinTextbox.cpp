#include "controls/SkinTextbox.h"

#include <QPalette>

namespace dravik {

SkinTextbox::SkinTextbox(QWidget* parent) : QLineEdit(parent) {
    setFrame(false);
    setContextMenuPolicy(Qt::NoContextMenu);
    SetLook({}, 0xFFFFFF);
}

void SkinTextbox::SetBox(int x, int y, int width, int height) {
    box_ = {double(x), double(y), double(width), double(height), box_.Scale};
    Place();
}

void SkinTextbox::SetScale(double scale) {
    if (scale == box_.Scale) return;
    box_.Scale = scale;
    setFont(SkinFont(look_, scale));
    Place();
}

void SkinTextbox::Place() {
    const QRect pixels = box_.Pixels();
    if (pixels != geometry()) setGeometry(pixels);
}

void SkinTextbox::SetLook(const TextLook& look, std::int32_t backColor) {
    look_ = look;
    setFont(SkinFont(look, box_.Scale));
    setAlignment(SkinAlignment(look.Alignment) | Qt::AlignVCenter);
    const QColor text = SkinColor(look.Color);
    const QColor back = SkinColor(backColor);
    QPalette colors = palette();
    colors.setColor(QPalette::Base, back);
    colors.setColor(QPalette::Text, text);
    colors.setColor(QPalette::Highlight, text);
    colors.setColor(QPalette::HighlightedText, back);
    setPalette(colors);
}

std::string SkinTextbox::Text() const {
    return text().toStdString();
}

void SkinTextbox::SetText(const std::string& text) {
    const QString shown = ShownText(text);
    if (shown != QLineEdit::text()) setText(shown);
}

}  // namespace dravik
