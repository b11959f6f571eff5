#pragma once
// The sales table the browse benchmarks open: 1,000,000 rows x 6 columns (a key, a Thai or English
// item name, two amounts, a date, a discount that is NULL in every third row), and what both read
// of the process.
#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

namespace bench {

constexpr int kSalesRows = 1'000'000;

// Resident set and its peak, in bytes, from the kernel.
inline long long procStatus(const char* field) {
  std::ifstream f("/proc/self/status");
  std::string line;
  const size_t n = std::strlen(field);
  while (std::getline(f, line))
    if (line.compare(0, n, field) == 0) return std::stoll(line.substr(n + 1)) * 1024;
  return -1;
}
inline void resetPeak() { std::ofstream("/proc/self/clear_refs") << "5"; }

inline void check(int rc, sqlite3* db, const char* what) {
  if (rc != SQLITE_OK && rc != SQLITE_DONE && rc != SQLITE_ROW) {
    std::fprintf(stderr, "%s: %s\n", what, sqlite3_errmsg(db));
    std::exit(2);
  }
}

// withTime: the dates carry an hour of the day as well.
inline void makeSalesTable(const std::string& path, bool withTime) {
  sqlite3* db = nullptr;
  check(sqlite3_open(path.c_str(), &db), db, "open");
  check(sqlite3_exec(db,
                     "PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF;"
                     "CREATE TABLE Sales(SaleID INTEGER, ItemName TEXT, Price REAL, Amount REAL, SaleDate REAL,"
                     " Discount REAL); BEGIN;",
                     nullptr, nullptr, nullptr),
        db, "schema");
  sqlite3_stmt* st = nullptr;
  check(sqlite3_prepare_v2(db, "INSERT INTO Sales VALUES (?,?,?,?,?,?)", -1, &st, nullptr), db, "prepare");
  const char* names[] = {"ปากกาลูกลื่น", "ดินสอดำ 2B", "ยางลบ", "สมุดบันทึก A5", "Stapler No.10"};
  char text[96];
  for (int i = 1; i <= kSalesRows; ++i) {
    const int n = std::snprintf(text, sizeof text, "%s #%d", names[i % 5], i);
    sqlite3_bind_int64(st, 1, i);
    sqlite3_bind_text(st, 2, text, n, SQLITE_STATIC);
    sqlite3_bind_double(st, 3, 10.0 + (i % 1000) * 0.25);
    sqlite3_bind_double(st, 4, (i % 97) * 12.5);
    sqlite3_bind_double(st, 5, 45000.0 + (i % 3650) + (withTime ? (i % 24) / 24.0 : 0.0));
    if (i % 3 == 0) sqlite3_bind_null(st, 6);
    else sqlite3_bind_double(st, 6, (i % 7) * 0.05);
    check(sqlite3_step(st), db, "insert");
    sqlite3_reset(st);
  }
  sqlite3_finalize(st);
  check(sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr), db, "commit");
  sqlite3_close(db);
}

}  // namespace bench
