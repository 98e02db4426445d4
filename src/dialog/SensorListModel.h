#pragma once

#include <QAbstractTableModel>

#include "settings/SensorEditor.h"

namespace dravik {

/// Shows the rows of a sensor editor to a list.
class SensorListModel : public QAbstractTableModel {
 public:
    SensorListModel(SensorEditor& editor, QObject* parent);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// Tells the list that a text of the selected row is another one.
    void TextChanged(SensorField field);

    /// Carries out a change of the rows themselves; true when it was made.
    template <typename Change>
    bool ChangeRows(const Change& change) {
        beginResetModel();
        const bool made = change();
        endResetModel();
        return made;
    }

 private:
    SensorEditor& editor_;
};

}  // namespace dravik
