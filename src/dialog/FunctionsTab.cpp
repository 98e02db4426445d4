#include <QAbstractTableModel>
#include <QHeaderView>
#include <QTableView>
#include <QVBoxLayout>

#include "dialog/DialogControls.h"
#include "dialog/FunctionNames.h"
#include "dialog/InfoTabs.h"
#include "dialog/SettingsLook.h"
#include "platform/At.h"

namespace dravik {

namespace {

constexpr const char* kColumns[] = {"PID", "Source", "Function"};

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
        return Shown(At(kFunctionNames, index.row()));
    }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
        return InWords(kColumns[section]);
    }
};

}  // namespace

QWidget* MakeFunctionsTab() {
    auto* tab = new QWidget;
    tab->setObjectName(QStringLiteral("page"));
    QTableView* list = MakeTable("listFunctions", new FunctionListModel(tab), {60, 100, 300});
    list->horizontalHeader()->setStretchLastSection(true);
    auto* layout = new QVBoxLayout(tab);
    layout->setContentsMargins(Px(6), Px(6), Px(6), 0);
    layout->addWidget(list);
    return tab;
}

}  // namespace dravik
