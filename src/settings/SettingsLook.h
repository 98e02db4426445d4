#pragma once

#include <QComboBox>
#include <QPushButton>
#include <QString>
#include <string>
#include <string_view>

class QAbstractScrollArea;
class QCheckBox;
class QDialog;
class QGroupBox;
class QLabel;
class QLineEdit;
class QWidget;

/// How the settings dialog looks, and the controls it is made of. Everything that is touched is at
/// least kTouchHeight pixels high.
namespace dravik {

constexpr int kTouchHeight = 42;

/// Gives a window the look of the program: dark slate, one accent colour.
void ApplySettingsLook(QWidget* window);

/// Makes a dialog of the toolkit, a child of such a window, as large as that and usable by a
/// finger.
void FitForTouch(QDialog* dialog);

/// Bytes of a file as they are shown.
QString Shown(std::string_view bytes);

/// What stands in a field, as bytes. A field that was not edited keeps the bytes that it came from,
/// whatever their encoding.
std::string Typed(const QString& text, const std::string& before);

// The controls. Each has the object name by which it is known; the layout that it is put into gives
// it a parent.

QLabel* MakeLabel(const QString& text);
QLineEdit* MakeField(const char* name, int width = 0);
QCheckBox* MakeCheck(const char* name, const QString& text);
QPushButton* MakeButton(const char* name, const QString& text);
QGroupBox* MakeGroup(const QString& title);

/// A box whose text may be typed freely; what is typed is never completed or corrected.
QComboBox* MakeFreeCombo(const char* name);
/// A box to choose from.
QComboBox* MakeChoice(const char* name);

/// Offers a text with a note beside it that is shown in the drop-down list only.
void AddNoted(QComboBox* box, const QString& text, const QString& note);

/// Shows a text in a box as if it had always stood there: nobody is told. Where it is one of the
/// choices, the drop-down list opens on that.
void ShowIn(QComboBox* box, const QString& text);

/// Lets a finger push the content.
void ScrollByTouch(QAbstractScrollArea* area);

}  // namespace dravik
