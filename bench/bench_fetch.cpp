// Browse view open: 1,000,000 rows x 6 columns fetched into a static record set, against a bare
// sqlite3 fetch of the same rows into plain containers, in the same run.
// Budgets: open time at most 1.5x the bare fetch; peak memory of the open at most 2x the data.
#include "companion/db/Connection.h"
#include "companion/db/Recordset.h"
#include "frame/Error.h"

#include "BenchSales.h"

#include <QTemporaryDir>
#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

namespace {

using bench::check;
using bench::procStatus;
using bench::resetPeak;

constexpr int kRows = bench::kSalesRows;
constexpr double kTimeBudget = 1.5;
constexpr double kMemoryBudget = 2.0;

double seconds(std::chrono::steady_clock::time_point t0) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
}

void makeDatabase(const std::string& path) { bench::makeSalesTable(path, true); }

const char* kSelect = "SELECT SaleID, ItemName, Price, Amount, SaleDate, Discount FROM Sales";

// The baseline: the same rows read with the C API into the plainest containers.
struct Bare {
  std::vector<int64_t> id;
  std::vector<std::string> name;
  std::vector<double> price, amount, date, discount;
  std::vector<bool> discountNull;
  size_t dataBytes = 0;  // the values themselves: 8 per number, the text's bytes, a bit per null flag
  double checksum = 0;
};

Bare bareFetch(const std::string& path) {
  Bare b;
  sqlite3* db = nullptr;
  check(sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr), db, "open");
  sqlite3_stmt* st = nullptr;
  check(sqlite3_prepare_v2(db, kSelect, -1, &st, nullptr), db, "prepare");
  int rc;
  while ((rc = sqlite3_step(st)) == SQLITE_ROW) {
    b.id.push_back(sqlite3_column_int64(st, 0));
    b.name.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(st, 1)), size_t(sqlite3_column_bytes(st, 1)));
    b.price.push_back(sqlite3_column_double(st, 2));
    b.amount.push_back(sqlite3_column_double(st, 3));
    b.date.push_back(sqlite3_column_double(st, 4));
    const bool null = sqlite3_column_type(st, 5) == SQLITE_NULL;
    b.discountNull.push_back(null);
    b.discount.push_back(null ? 0.0 : sqlite3_column_double(st, 5));
  }
  check(rc, db, "step");
  sqlite3_finalize(st);
  sqlite3_close(db);
  for (size_t i = 0; i < b.id.size(); ++i) {
    b.dataBytes += 8 * 4 + b.name[i].size() + (b.discountNull[i] ? 0 : 8);
    b.checksum += double(b.id[i]) + b.price[i] + b.date[i] + b.discount[i] + double(b.name[i].size());
  }
  b.dataBytes += b.id.size() / 8;
  return b;
}

struct Opened {
  std::unique_ptr<tq7::db::Recordset> rs;
  std::unique_ptr<tq7::db::Connection> c;
};

// As the view opens its query: client cursor, no time limit, static read-only.
Opened openRecordset(const std::string& path) {
  Opened o;
  o.c = std::make_unique<tq7::db::Connection>();
  o.c->setCursorLocation(3);
  o.c->setCommandTimeout(0);
  o.c->Open(QStringLiteral("Provider=SQLite;Data Source=") + QString::fromStdString(path), "", "", -1);
  o.rs = std::make_unique<tq7::db::Recordset>();
  o.rs->Open(QString::fromLatin1(kSelect), *o.c, 3, 1, -1);
  return o;
}

double checksum(tq7::db::Recordset& rs) {
  double sum = 0;
  auto& f = rs.Fields();
  for (rs.MoveFirst(); !rs.EOF_(); rs.MoveNext()) {
    const QVariant d = f.Item(5).Value();
    sum += f.Item(0).Value().toDouble() + f.Item(2).Value().toDouble() + f.Item(4).Value().toDouble() +
           (d.isNull() ? 0.0 : d.toDouble()) + double(f.Item(1).Value().toString().toUtf8().size());
  }
  return sum;
}

}  // namespace

int main() {
  QTemporaryDir dir;
  const std::string path = dir.filePath(QStringLiteral("bench.db")).toStdString();
  auto t0 = std::chrono::steady_clock::now();
  makeDatabase(path);
  std::printf("data: %d rows x 6 columns written in %.2f s\n", kRows, seconds(t0));

  // Warm the file into the page cache, and take the size of the data.
  size_t dataBytes = 0;
  double bareSum = 0;
  {
    Bare b = bareFetch(path);
    dataBytes = b.dataBytes;
    bareSum = b.checksum;
    if (b.id.size() != size_t(kRows)) return 2;
  }

  // Memory: the record set's open alone, from a settled heap.
  long long rssBefore = procStatus("VmRSS:");
  resetPeak();
  size_t held = 0;
  double rsSum = 0;
  {
    Opened o;
    try {
      o = openRecordset(path);
    } catch (const tq7::Error& e) {
      std::fprintf(stderr, "open failed: %s\n", qPrintable(e.description));
      return 2;
    }
    const long long peak = procStatus("VmHWM:");
    held = o.rs->memoryBytes();
    if (o.rs->RecordCount() != kRows) return 2;
    rsSum = checksum(*o.rs);
    std::printf("memory: data %.1f MB, record set holds %.1f MB (%.2fx), peak RSS growth of the open %.1f MB (%.2fx)\n",
                dataBytes / 1e6, held / 1e6, double(held) / double(dataBytes), (peak - rssBefore) / 1e6,
                double(peak - rssBefore) / double(dataBytes));
    rssBefore = peak - rssBefore;  // keep the growth for the verdict
  }
  const double memRatio = double(rssBefore) / double(dataBytes);
  const double heldRatio = double(held) / double(dataBytes);
  if (std::abs(rsSum - bareSum) > 1e-6 * std::abs(bareSum)) {
    std::printf("checksum differs: record set %.6f, bare %.6f\n", rsSum, bareSum);
    return 2;
  }

  // Time: alternate the two, best of three each.
  double bare = 1e9, open = 1e9;
  for (int round = 0; round < 3; ++round) {
    t0 = std::chrono::steady_clock::now();
    { Bare b = bareFetch(path); }
    bare = std::min(bare, seconds(t0));
    t0 = std::chrono::steady_clock::now();
    { Opened o = openRecordset(path); }
    open = std::min(open, seconds(t0));
  }
  // Reading a page of 100 rows x 6 fields by position, as a fill does.
  double page = 1e9;
  {
    Opened o = openRecordset(path);
    o.rs->setPageSize(100);
    for (int round = 0; round < 20; ++round) {
      t0 = std::chrono::steady_clock::now();
      double s = 0;
      auto& f = o.rs->Fields();
      for (int p = 500001; p < 500101; ++p) {
        o.rs->setAbsolutePosition(p);
        for (int c = 0; c < 6; ++c) s += f.Item(c).Value().toString().size();
      }
      page = std::min(page, seconds(t0));
      if (s <= 0) return 2;
    }
  }

  const double ratio = open / bare;
  const bool timeOk = ratio <= kTimeBudget;
  const bool memOk = memRatio <= kMemoryBudget && heldRatio <= kMemoryBudget;
  std::printf("time: bare sqlite3 fetch %.3f s, record set open %.3f s; page of 100 rows read in %.3f ms\n", bare,
              open, page * 1e3);
  std::printf("memory budget: peak=%.2fx held=%.2fx budget=%.1f %s\n", memRatio, heldRatio, kMemoryBudget,
              memOk ? "ok" : "FAIL");
  std::printf("bench_fetch ratio=%.2f budget=%.1f %s\n", ratio, kTimeBudget, timeOk && memOk ? "ok" : "FAIL");
  return timeOk && memOk ? 0 : 1;
}
