#include "dialog/SensorListModel.h"

#include "dialog/SettingsLook.h"

namespace dravik {

SensorListModel::SensorListModel(SensorEditor& editor, QObject* parent)
    : QAbstractTableModel(parent), editor_(editor) {}

int SensorListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : editor_.Count();
}

int SensorListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(kSensorFields.size());
}

QVariant SensorListModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole || !index.isValid()) return {};
    const SensorRow& row = editor_.Rows()[static_cast<std::size_t>(index.row())];
    return Shown(row[static_cast<std::size_t>(index.column())]);
}

QVariant SensorListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return InWords(kSensorFields[static_cast<std::size_t>(section)]);
}

void SensorListModel::TextChanged(SensorField field) {
    const QModelIndex cell = index(editor_.Selected(), static_cast<int>(field));
    Q_EMIT dataChanged(cell, cell);
}

}  // namespace dravik
