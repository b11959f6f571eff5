#pragma once
// What the view tests share: a real SQLite file of items, and a listener that writes down every
// event of the view with what the view held when it was raised.
#include "companion/db/DbTestSupport.h"
#include "view/DataView.h"

#include <QStringList>

namespace tq7::test {

// Items 1..rows: a key, a name, a price, an ISO date, a status (0,1,2), a kind (0..3), a flag.
inline std::string itemsSql(int rows) {
  return "CREATE TABLE Items(ItemID INTEGER PRIMARY KEY, ItemName TEXT, Price REAL, DocDate TEXT, Status INTEGER,"
         " Kind INTEGER, Flag INTEGER, Code TEXT);"
         "INSERT INTO Items WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<" +
         std::to_string(rows) +
         ") SELECT i, 'Item ' || i, i * 1.5, date('2024-01-01', '+' || (i - 1) || ' day'), i % 3, i % 5, i % 2,"
         " 'C' || i FROM n;";
}

struct ItemsFile : SqliteFile {
  explicit ItemsFile(int rows, const std::string& extra = {}) : SqliteFile((itemsSql(rows) + extra).c_str()) {}
};

// The definition most tests browse: key, name, price (type 1), date (6), status (4), kind (13), flag (3).
inline const QString kFields = QStringLiteral("ItemID,ItemName,Price,DocDate,Status,Kind,Flag");
inline const QString kLabels = QStringLiteral("No,Name,Price,Date,Status,Kind;Zero;One;Two,Flag");
inline const QString kWidths = QStringLiteral("600,2000,1000,1200,800,900,600");
inline const QString kTypes = QStringLiteral("0,0,1,6,4,13,3");

struct ViewLog : DataViewEvents {
  DataView* view = nullptr;
  QStringList log;
  int fills = 0;
  double widthAtCount = 0;  // the surface's width when the count was told, before the layout
  void AddCommandClick() override { log << "Add " + state(); }
  void EditCommandClick() override { log << "Edit " + state(); }
  void DeleteCommandClick() override { log << "Delete " + state(); }
  void SelectCommandClick() override { log << "Select " + state(); }
  void OpenCommandClick() override { log << "Open " + state(); }
  void CancelCommandClick() override { log << "Cancel " + state(); }
  void PrintCommandClick() override { log << "Print " + state(); }
  void ExportCommandClick() override { log << "Export " + state(); }
  void RecordCountChange() override {
    widthAtCount = view->mfgData.Width();
    log << QStringLiteral("RecordCountChange %1").arg(view->RecordCount);
  }
  void BeforeFillRecord(int32_t) override { ++fills; }
  void AfterFillRecord(int32_t) override {}
  void ActionReady() override { log << "ActionReady"; }
  void SelectionChange(Matrix&) override { log << "SelectionChange"; }
  void SelectAll(Matrix&) override { log << "SelectAll"; }
  void DeSelectAll(Matrix&) override { log << "DeSelectAll"; }
  void RowDeleted(int32_t Row) override { log << QStringLiteral("RowDeleted %1").arg(Row); }
  QString state() const { return QStringLiteral("%1 [%2]").arg(view->iActionCommandID).arg(view->TextResult); }
  int count(const QString& prefix) const {
    int n = 0;
    for (const QString& l : log) n += l.startsWith(prefix);
    return n;
  }
};

// A view listened to, on the items of a file.
struct ItemsView {
  DataView view;
  ViewLog events;
  ItemsView() {
    events.view = &view;
    view.setListener(&events);
  }
  void show(const QString& conn, const QString& table = QStringLiteral("Items"), bool multi = false,
            int32_t filter = 1) {
    view.showData("Items", "ItemID", kFields, kLabels, kWidths, kTypes, table, conn, 1, 1, 1, filter, 1, 0, 0, 0, 0,
                  false, multi);
  }
};

}  // namespace tq7::test
