#include "dialog/SensorListModel.h"

#include "dialog/DialogControls.h"
#include "platform/At.h"

namespace dravik {

SensorListModel::SensorListModel(SensorEditor& editor, QObject* parent)
    : QAbstractTableModel(parent), editor_(editor) {}

int SensorListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : editor_.Count();
}

int SensorListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(kSensorColumns);
}

QVariant SensorListModel::data(const QModelIndex& index, int role) const {
    if (role != Qt::DisplayRole || !index.isValid()) return {};
    const SensorRow& row = At(editor_.Rows(), index.row());
    return Shown(At(row, index.column()));
}

QVariant SensorListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return InWords(At(kSensorFields, section));
}

void SensorListModel::TextChanged(SensorField field) {
    if (static_cast<std::size_t>(field) >= kSensorColumns) return;
    const QModelIndex cell = index(editor_.Selected(), static_cast<int>(field));
    Q_EMIT dataChanged(cell, cell);
}

}  // namespace dravik
