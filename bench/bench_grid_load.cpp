// Grid load: 100,000 records x 20 columns of mixed types from SQLite into a GridEditor declared
// with those 20 columns on the default 200-column grid, against a bare sqlite3 fetch of the same
// rows in the same run; then 200,000 records, which must cost no more than 2.2x the 100,000.
#include "companion/VbText.h"
#include "frame/FakePlatform.h"
#include "grid/editor/GridEditor.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <sqlite3.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

double seconds(Clock::time_point a, Clock::time_point b) { return std::chrono::duration<double>(b - a).count(); }

long peakRssKb() {
  std::ifstream f("/proc/self/status");
  std::string line;
  while (std::getline(f, line))
    if (line.rfind("VmHWM:", 0) == 0) return std::stol(line.substr(6));
  return 0;
}

// The 20 columns: name, SQL type, field type, decimals.
struct Col {
  const char* name;
  const char* sql;
  const char* type;
  int decimals;
};
const Col kCols[20] = {
    {"ID", "INTEGER", "NUMBER", 0},      {"Code", "TEXT", "TEXT", 0},         {"Name", "TEXT", "TEXT", 0},
    {"Qty", "REAL", "NUMBER", 2},        {"Price", "REAL", "NUMBER", 2},      {"Amount", "REAL", "NUMBER", 2},
    {"Disc", "REAL", "ABSNUMBER", 2},    {"Doc", "REAL", "DATE", 0},          {"Due", "REAL", "DATE", 0},
    {"Period", "REAL", "PERIOD", 0},     {"Stamp", "REAL", "DATETIME", 0},    {"At", "REAL", "TIME", 0},
    {"Hours", "REAL", "HOUR", 0},        {"Yr", "INTEGER", "YEAR", 0},        {"Paid", "INTEGER", "YESNO", 0},
    {"Done", "INTEGER", "CHECK", 0},     {"Pay", "INTEGER", "LABELLIST", 0},  {"Remark", "TEXT", "TEXT", 0},
    {"Weight", "REAL", "NUMBER", 3},     {"Branch", "TEXT", "TEXT", 0},
};

void makeTable(const std::string& path, int rows) {
  sqlite3* db = nullptr;
  sqlite3_open(path.c_str(), &db);
  sqlite3_exec(db, "PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF;", nullptr, nullptr, nullptr);
  std::string ddl = "CREATE TABLE Lines (";
  for (int i = 0; i < 20; ++i) ddl += std::string(i ? ", " : "") + kCols[i].name + " " + kCols[i].sql;
  ddl += ")";
  sqlite3_exec(db, ddl.c_str(), nullptr, nullptr, nullptr);
  sqlite3_exec(db, "BEGIN", nullptr, nullptr, nullptr);
  sqlite3_stmt* st = nullptr;
  sqlite3_prepare_v2(db, "INSERT INTO Lines VALUES (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)", -1, &st, nullptr);
  const char* names[] = {"ข้าวหอมมะลิ 5 กก.", "น้ำปลาแท้ 700 มล.", "กาแฟสำเร็จรูป", "Jasmine rice", "Soap bar"};
  const double base = tq7::vb::DateSerial(2024, 1, 1);
  for (int r = 1; r <= rows; ++r) {
    const double qty = (r % 17) + 1, price = 10.25 + (r % 100);
    sqlite3_bind_int(st, 1, r);
    const std::string code = "IT-" + std::to_string(100000 + r);
    sqlite3_bind_text(st, 2, code.c_str(), -1, SQLITE_TRANSIENT);
    sqlite3_bind_text(st, 3, names[r % 5], -1, SQLITE_STATIC);
    sqlite3_bind_double(st, 4, qty);
    sqlite3_bind_double(st, 5, price);
    sqlite3_bind_double(st, 6, qty * price);
    sqlite3_bind_double(st, 7, -(r % 7) * 1.5);
    sqlite3_bind_double(st, 8, base + r % 365);
    sqlite3_bind_double(st, 9, base + 30 + r % 365);
    sqlite3_bind_double(st, 10, base + (r % 12) * 31);
    sqlite3_bind_double(st, 11, base + r % 365 + 0.375);
    sqlite3_bind_double(st, 12, (r % 96) / 96.0);
    sqlite3_bind_double(st, 13, (r % 9) + 0.3);
    sqlite3_bind_int(st, 14, 2020 + r % 5);
    sqlite3_bind_int(st, 15, r % 2);
    sqlite3_bind_int(st, 16, (r + 1) % 2);
    sqlite3_bind_int(st, 17, r % 3);
    if (r % 4)
      sqlite3_bind_text(st, 18, "ส่งด่วน", -1, SQLITE_STATIC);
    else
      sqlite3_bind_null(st, 18);
    sqlite3_bind_double(st, 19, (r % 1000) / 7.0);
    sqlite3_bind_text(st, 20, "สาขา 1", -1, SQLITE_STATIC);
    sqlite3_step(st);
    sqlite3_reset(st);
  }
  sqlite3_finalize(st);
  sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr);
  sqlite3_close(db);
}

// The bare fetch: every value of every row read into plain columns.
double bareFetch(const std::string& path) {
  const auto t0 = Clock::now();
  sqlite3* db = nullptr;
  sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READONLY, nullptr);
  sqlite3_stmt* st = nullptr;
  sqlite3_prepare_v2(db, "SELECT * FROM Lines", -1, &st, nullptr);
  std::vector<std::vector<double>> numbers(20);
  std::vector<std::vector<std::string>> texts(20);
  while (sqlite3_step(st) == SQLITE_ROW) {
    for (int c = 0; c < 20; ++c) {
      if (sqlite3_column_type(st, c) == SQLITE_TEXT)
        texts[size_t(c)].emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(st, c)),
                                      size_t(sqlite3_column_bytes(st, c)));
      else
        numbers[size_t(c)].push_back(sqlite3_column_double(st, c));
    }
  }
  sqlite3_finalize(st);
  sqlite3_close(db);
  return seconds(t0, Clock::now());
}

double gridLoad(const std::string& path, int expectRows) {
  tq7::GridEditor g;
  g.SetFirst(0);
  for (int i = 0; i < 20; ++i) {
    const Col& c = kCols[i];
    g.addField3(int16_t(i + 1), c.name, c.type, i == 0 ? 1 : 0, QString::fromUtf8(c.name), int16_t(c.decimals), {},
                0, {}, 0, 20, 1, 1, 1, 0, 1000, 0, 0, i == 16 ? QStringLiteral("A,B,C") : QString());
  }
  const QString conn = QStringLiteral("Data Source=") + QString::fromStdString(path);
  g.SetData("Lines", "Lines", {}, {}, {}, 0, conn, conn);
  g.SetLast3(QDir::tempPath(), "grdBench", "1", {}, {});
  const auto t0 = Clock::now();
  g.FillData3();
  const double t = seconds(t0, Clock::now());
  if (g.ErrorNumber != 0 || g.Rows() != expectRows) {
    std::printf("load failed: ErrorNumber=%d rows=%d\n", g.ErrorNumber, g.Rows());
    std::exit(2);
  }
  return t;
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  tq7::FakePlatform quiet;
  QTemporaryDir dir;
  // "--profile N": one load of N records only, for a profiler; no budget is judged.
  if (argc == 3 && std::string(argv[1]) == "--profile") {
    const int n = std::atoi(argv[2]);
    const std::string path = dir.filePath("profile.db").toStdString();
    makeTable(path, n);
    std::printf("load %d x 20: %.1f ms\n", n, gridLoad(path, n) * 1000);
    return 0;
  }
  const std::string small = dir.filePath("lines100k.db").toStdString();
  const std::string large = dir.filePath("lines200k.db").toStdString();
  makeTable(small, 100000);
  makeTable(large, 200000);

  // Warm the file cache and the code once, then take the best of three.
  bareFetch(small);
  double bare = 1e9, load100 = 1e9, load200 = 1e9;
  for (int i = 0; i < 3; ++i) bare = std::min(bare, bareFetch(small));
  for (int i = 0; i < 3; ++i) load100 = std::min(load100, gridLoad(small, 100000));
  for (int i = 0; i < 2; ++i) load200 = std::min(load200, gridLoad(large, 200000));

  const double ratio = load100 / bare;
  const double linear = load200 / load100;
  const bool ok = ratio <= 3.0 && linear <= 2.2;
  std::printf("bare sqlite3 fetch 100000 x 20: %.1f ms\n", bare * 1000);
  std::printf("GridEditor FillData3 100000 x 20: %.1f ms\n", load100 * 1000);
  std::printf("GridEditor FillData3 200000 x 20: %.1f ms\n", load200 * 1000);
  std::printf("peak RSS: %.1f MiB\n", peakRssKb() / 1024.0);
  std::printf("bench_grid_load ratio=%.2f budget=3 linear=%.2f budget=2.2 %s\n", ratio, linear, ok ? "ok" : "FAIL");
  return ok ? 0 : 1;
}
