#include <QAbstractTableModel>
#include <QHeaderView>
#include <QTableView>
#include <QVBoxLayout>

#include "settings/FunctionNames.h"
#include "settings/InfoTabs.h"
#include "settings/SettingsLook.h"

namespace dravik {

namespace {

constexpr const char* kColumns[] = {"PID", "Source", "Function"};
constexpr int kColumnWidths[] = {90, 140, 300};

class FunctionListModel : public QAbstractTableModel {
 public:
    using QAbstractTableModel::QAbstractTableModel;

    int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : static_cast<int>(kFunctionNames.size());
    }

    int columnCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : static_cast<int>(std::size(kColumns));
    }

    QVariant data(const QModelIndex& index, int role) const override {
        if (role != Qt::DisplayRole) return {};
        const QString pid =
            QStringLiteral("%1").arg(index.row(), 2, 16, QLatin1Char('0')).toUpper();
        if (index.column() == 0) return pid;
        if (index.column() == 1) return QString(QStringLiteral("obd_") + pid);
        return Shown(kFunctionNames[static_cast<std::size_t>(index.row())]);
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
        return QString::fromLatin1(kColumns[section]);
    }
};

}  // namespace

QWidget* MakeFunctionsTab() {
    auto* tab = new QWidget;
    tab->setObjectName(QStringLiteral("page"));
    auto* list = new QTableView;
    list->setObjectName(QStringLiteral("listFunctions"));
    list->setModel(new FunctionListModel(list));
    list->setSelectionBehavior(QAbstractItemView::SelectRows);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    list->setAlternatingRowColors(true);
    list->setShowGrid(false);
    list->setTabKeyNavigation(false);
    list->verticalHeader()->hide();
    list->verticalHeader()->setDefaultSectionSize(kTouchHeight);
    list->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    list->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    list->horizontalHeader()->setHighlightSections(false);
    list->horizontalHeader()->setStretchLastSection(true);
    for (int column = 0; column < static_cast<int>(std::size(kColumns)); ++column)
        list->setColumnWidth(column, kColumnWidths[column]);
    ScrollByTouch(list);
    auto* layout = new QVBoxLayout(tab);
    layout->setContentsMargins(6, 6, 6, 0);
    layout->addWidget(list);
    return tab;
}

}  // namespace dravik
