#pragma once

#include <QComboBox>
#include <QPushButton>
#include <QString>
#include <initializer_list>
#include <string>
#include <string_view>

class QAbstractItemModel;
class QAbstractScrollArea;
class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QScrollArea;
class QTableView;
class QWidget;

/// The controls that the settings dialog is made of, and its texts.
namespace dravik {

/// Bytes of a file as they are shown.
QString Shown(std::string_view bytes);

/// A text of the dialog in the user's language.
QString InWords(std::string_view english);

/// What stands in a field, as bytes. A field that was not edited keeps the bytes that it came from,
/// whatever their encoding.
std::string Typed(const QString& text, const std::string& before);

// The controls. Each has the object name by which it is known; the layout that it is put into gives
// it a parent.

QLabel* MakeLabel(const QString& text);
/// A text that explains another; not to be read at a glance.
QLabel* MakeFaint(const QString& text);
/// A field for any text. A touch on it brings up the on-screen keyboard.
QLineEdit* MakeField(const char* name);
QCheckBox* MakeCheck(const char* name, const QString& text);
QPushButton* MakeButton(const char* name, const QString& text);
/// A frame around a content.
QGroupBox* MakeGroup(const QString& title, QWidget* content);
/// A list of rows to select from.
QTableView* MakeTable(const char* name, QAbstractItemModel* rows,
                      std::initializer_list<int> columnWidths);

/// A box whose text may be typed freely; what is typed is never completed or corrected. A touch on
/// the text brings up the on-screen keyboard.
QComboBox* MakeFreeCombo(const char* name);
/// A box to choose from.
QComboBox* MakeChoice(const char* name);

/// Offers a text with a note beside it that is shown in the drop-down list only.
void AddNoted(QComboBox* box, const QString& text, const QString& note);

/// Shows a text in a box as if it had always stood there: nobody is told. Where it is one of the
/// choices, the drop-down list opens on that.
void ShowIn(QComboBox* box, const QString& text);

/// Lets a finger or a held mouse button push the content.
void ScrollByTouch(QAbstractScrollArea* area);

/// Makes a page the content of a tab that is pushed up and down.
void FillTab(QScrollArea* tab, QWidget* page);

}  // namespace dravik
