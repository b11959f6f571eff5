#pragma once
// The table of invoice-like lines the grid benchmarks load: 20 columns of mixed types, Thai texts,
// dates as serials, a null-bearing column.
#include "companion/VbText.h"
#include "grid/editor/GridEditor.h"

#include <QDir>

#include <sqlite3.h>

#include <chrono>
#include <fstream>
#include <string>

namespace bench {

using Clock = std::chrono::steady_clock;

inline double seconds(Clock::time_point a, Clock::time_point b) { return std::chrono::duration<double>(b - a).count(); }

inline long peakRssKb() {
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
inline const Col kCols[20] = {
    {"ID", "INTEGER", "NUMBER", 0},      {"Code", "TEXT", "TEXT", 0},         {"Name", "TEXT", "TEXT", 0},
    {"Qty", "REAL", "NUMBER", 2},        {"Price", "REAL", "NUMBER", 2},      {"Amount", "REAL", "NUMBER", 2},
    {"Disc", "REAL", "ABSNUMBER", 2},    {"Doc", "REAL", "DATE", 0},          {"Due", "REAL", "DATE", 0},
    {"Period", "REAL", "PERIOD", 0},     {"Stamp", "REAL", "DATETIME", 0},    {"At", "REAL", "TIME", 0},
    {"Hours", "REAL", "HOUR", 0},        {"Yr", "INTEGER", "YEAR", 0},        {"Paid", "INTEGER", "YESNO", 0},
    {"Done", "INTEGER", "CHECK", 0},     {"Pay", "INTEGER", "LABELLIST", 0},  {"Remark", "TEXT", "TEXT", 0},
    {"Weight", "REAL", "NUMBER", 3},     {"Branch", "TEXT", "TEXT", 0},
};

inline void makeTable(const std::string& path, int rows) {
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

// A grid on the default 200 columns declared with the 20 columns of the table, finished and
// pointed at the table in the file.
inline void declareLines(tq7::GridEditor& g, const std::string& path) {
  g.SetFirst(0);
  for (int i = 0; i < 20; ++i) {
    const Col& c = kCols[i];
    g.addField3(int16_t(i + 1), c.name, c.type, i == 0 ? 1 : 0, QString::fromUtf8(c.name), int16_t(c.decimals), {},
                0, {}, 0, 20, 1, 1, 1, 0, 1000, 0, 0, i == 16 ? QStringLiteral("A,B,C") : QString());
  }
  const QString conn = QStringLiteral("Data Source=") + QString::fromStdString(path);
  g.SetData("Lines", "Lines", {}, {}, {}, 0, conn, conn);
  g.SetLast3(QDir::tempPath(), "grdBench", "1", {}, {});
}

}  // namespace bench
