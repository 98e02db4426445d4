#pragma once

#include <QLineEdit>
#include <string>

#include "controls/DesignBox.h"
#include "controls/SkinText.h"

namespace dravik {

/// An editable text field of the skin.
class SkinTextbox : public QLineEdit {
 public:
    explicit SkinTextbox(QWidget* parent = nullptr);

    void SetBox(int x, int y, int width, int height);  ///< design pixels
    void SetScale(double scale);
    const DesignBox& Box() const { return box_; }
    void SetLook(const TextLook& look, std::int32_t backColor);

    std::string Text() const;  ///< UTF-8
    void SetText(const std::string& text);

    std::string Function;  ///< what the field edits, kept for the main window

 private:
    void Place();

    DesignBox box_;
    TextLook look_;
};

}  // namespace dravik
