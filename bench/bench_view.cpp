// Browse view: 1,000,000 rows x 6 columns in SQLite, opened by DataView and shown as its first
// page, against the floor of a loop of sqlite3_step that reads each column once and stores
// nothing, measured in the same run. Then a page move (the fill of one page), the peak memory of
// the open against the fetched data, and a filter over the million rows against the floor for the
// filtered statement.
// Budgets: open plus first page within 1.6x the floor; a page move under 2 ms; peak memory under
// 2x the fetched data; the filter within 1.6x of its floor.
#include "frame/FakePlatform.h"
#include "companion/db/Recordset.h"
#include "view/DataView.h"
#include "view/FilterData.h"

#include "BenchSales.h"

#include <QTemporaryDir>
#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>

namespace {

using bench::check;
using bench::procStatus;
using bench::resetPeak;

constexpr int kRows = bench::kSalesRows;
constexpr double kTimeBudget = 1.6;
constexpr double kPageBudgetMs = 2.0;
constexpr double kMemoryBudget = 2.0;

using Clock = std::chrono::steady_clock;
double seconds(Clock::time_point t0) { return std::chrono::duration<double>(Clock::now() - t0).count(); }

void makeDatabase(const std::string& path) { bench::makeSalesTable(path, false); }

const char* kFields = "SaleID,ItemName,Price,Amount,SaleDate,Discount";

// The floor: every row stepped, each column read once by its own type, nothing stored, on a
// connection without the engine's own locking (as the data layer opens it). Answers
// the rows and the bytes of the values (8 a number, the text's bytes, nothing for a NULL).
struct Floor {
  double seconds = 0;
  long rows = 0;
  size_t bytes = 0;
};
Floor floorFetch(const std::string& path, const std::string& sql) {
  const auto t0 = Clock::now();
  Floor f;
  sqlite3* db = nullptr;
  check(sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr), db, "open");
  sqlite3_stmt* st = nullptr;
  check(sqlite3_prepare_v2(db, sql.c_str(), -1, &st, nullptr), db, "prepare");
  int rc;
  const int cols = sqlite3_column_count(st);
  while ((rc = sqlite3_step(st)) == SQLITE_ROW) {
    ++f.rows;
    for (int c = 0; c < cols; ++c) {
      switch (sqlite3_column_type(st, c)) {
        case SQLITE_INTEGER: sqlite3_column_int64(st, c); f.bytes += 8; break;
        case SQLITE_FLOAT: sqlite3_column_double(st, c); f.bytes += 8; break;
        case SQLITE_TEXT:
          sqlite3_column_text(st, c);
          f.bytes += size_t(sqlite3_column_bytes(st, c));
          break;
        default: break;
      }
    }
  }
  check(rc, db, "step");
  sqlite3_finalize(st);
  sqlite3_close(db);
  f.seconds = seconds(t0);
  return f;
}

struct Listener : tq7::DataViewEvents {
  int ready = 0;
  void ActionReady() override { ++ready; }
};

}  // namespace

int main() {
  tq7::FakePlatform fake;  // no boxes, a counted event pump
  QTemporaryDir dir;
  const std::string path = dir.filePath(QStringLiteral("bench.db")).toStdString();
  const QString conn = QStringLiteral("Data Source=") + QString::fromStdString(path);
  auto t0 = Clock::now();
  makeDatabase(path);
  std::printf("data: %d rows x 6 columns written in %.2f s\n", kRows, seconds(t0));
  const std::string all = std::string("SELECT ") + kFields + " FROM Sales";
  const std::string filtered = all + " WHERE Price > 200";
  Floor warm = floorFetch(path, all);  // warms the page cache
  if (warm.rows != kRows) return 2;

  // Memory: one open from a settled heap, against the bytes of the values fetched.
  long long peakGrowth = 0;
  size_t held = 0;
  {
    const long long before = procStatus("VmRSS:");
    resetPeak();
    tq7::DataView v;
    v.showData("s", "SaleID", kFields, "No,Name,Price,Amount,Date,Disc", "600,2400,1200,1200,1200,900", "2,0,1,1,6,5",
               "Sales", conn, 1, 1, 1, 1, 1);
    peakGrowth = procStatus("VmHWM:") - before;
    if (v.ErrorNumber != 0 || v.RecordCount != kRows || v.TextMatrix(1, 1) != "1") {
      std::fprintf(stderr, "open failed: %d %s\n", v.ErrorNumber, qPrintable(v.Text1.Text()));
      return 2;
    }
    held = v.GETRecordset()->memoryBytes();
  }

  // Time: the floor and the view's open plus first page, alternated, best of three.
  double floorAll = 1e9, open = 1e9, floorFiltered = 1e9, filter = 1e9, pageMs = 1e9;
  long filteredRows = 0;
  for (int round = 0; round < 3; ++round) {
    floorAll = std::min(floorAll, floorFetch(path, all).seconds);
    tq7::DataView v;
    Listener l;
    v.setListener(&l);
    t0 = Clock::now();
    v.showData("s", "SaleID", kFields, "No,Name,Price,Amount,Date,Disc", "600,2400,1200,1200,1200,900", "2,0,1,1,6,5",
               "Sales", conn, 1, 1, 1, 1, 1);
    open = std::min(open, seconds(t0));
    if (l.ready != 1 || v.LastRecord() != 100) return 2;

    // Page moves: the fill of one page, anywhere in the million.
    for (int page : {5000, 2, 9999, 4321, 10000, 1}) {
      t0 = Clock::now();
      v.VScroll1.setValue(page);
      pageMs = std::min(pageMs, seconds(t0) * 1e3);
    }
    if (v.TextMatrix(1, -1000) != "1") return 2;

    // A filter typed into the dialog, over the million rows.
    const Floor ff = floorFetch(path, filtered);
    floorFiltered = std::min(floorFiltered, ff.seconds);
    filteredRows = ff.rows;
    fake.onShowModal = [](tq7::Form& form) {
      auto& f = static_cast<tq7::FilterData&>(form);
      f.lstFields.setListIndex(2);
      f.lstOperator.setListIndex(int(f.lstOperator.Items().indexOf(">")));
      f.txtValue.setText("200");
      f.cmdSearch_Click();
    };
    t0 = Clock::now();
    v.FilterTool();
    filter = std::min(filter, seconds(t0));
    if (v.RecordCount != filteredRows || v.SelectText().toStdString() != filtered) {
      std::fprintf(stderr, "filter: %d rows, %s\n", v.RecordCount, qPrintable(v.SelectText()));
      return 2;
    }
  }

  const double ratio = open / floorAll;
  const double filterRatio = filter / floorFiltered;
  const double mem = double(peakGrowth) / double(warm.bytes);
  std::printf("floor: sqlite3_step over %ld rows %.3f s (%.1f MB of values); filtered floor %.3f s for %ld rows\n",
              warm.rows, floorAll, warm.bytes / 1e6, floorFiltered, filteredRows);
  std::printf("view: open + first page %.3f s (%.2fx); page move %.3f ms; filter %.3f s (%.2fx)\n", open, ratio, pageMs,
              filter, filterRatio);
  std::printf("memory: result holds %.1f MB (%.2fx), peak RSS growth of the open %.1f MB (%.2fx)\n", held / 1e6,
              double(held) / double(warm.bytes), peakGrowth / 1e6, mem);
  const bool ok = ratio <= kTimeBudget && pageMs < kPageBudgetMs && mem < kMemoryBudget && filterRatio <= kTimeBudget;
  std::printf("filter ratio=%.2f budget=%.1f %s\n", filterRatio, kTimeBudget, filterRatio <= kTimeBudget ? "ok" : "FAIL");
  std::printf("bench_view ratio=%.2f budget=%.1f page_ms=%.3f budget=%.0f mem=%.2f budget=%.1f %s\n", ratio, kTimeBudget,
              pageMs, kPageBudgetMs, mem, kMemoryBudget, ok ? "ok" : "FAIL");
  return ok ? 0 : 1;
}
