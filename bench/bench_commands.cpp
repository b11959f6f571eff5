// Record commands on a 10,000-record grid: removing a record (with its reference check against the
// SQLite file the records came from) and inserting one at the top, which bubbles it up one
// exchange per record. Reports the times; the commands must stay interactive.
#include "BenchData.h"
#include "frame/FakePlatform.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <cstdio>

using namespace bench;

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  tq7::FakePlatform quiet;
  QTemporaryDir dir;
  const std::string path = dir.filePath("lines10k.db").toStdString();
  makeTable(path, 10000);

  tq7::GridEditor g;
  declareLines(g, path);
  g.setEditStatus(true);
  g.FillData3();
  if (g.ErrorNumber != 0 || g.Rows() != 10000) {
    std::printf("load failed: ErrorNumber=%d rows=%d\n", g.ErrorNumber, g.Rows());
    return 2;
  }

  g.setRecord(5000);
  auto t0 = Clock::now();
  g.cmdDelete_Click();
  const double remove = seconds(t0, Clock::now());
  const bool removed = g.TextMatrix(5000, -988) == QLatin1String("D");

  g.setRecord(1);
  t0 = Clock::now();
  g.cmdInsert_Click();
  const double insert = seconds(t0, Clock::now());
  const bool inserted = g.Rows() == 10001 && g.TextMatrix(1, -988).isEmpty() && g.TextMatrix(2, -989) == "1";

  std::printf("grid: 10000 records x 20 columns on 200 surface columns\n");
  std::printf("cmdDelete_Click with the reference check: %.1f ms (%s)\n", remove * 1000, removed ? "removed" : "NOT removed");
  std::printf("cmdInsert_Click at the top: %.1f ms (%s)\n", insert * 1000, inserted ? "inserted" : "NOT inserted");
  std::printf("bench_commands remove_ms=%.1f insert_ms=%.1f %s\n", remove * 1000, insert * 1000,
              removed && inserted ? "ok" : "FAIL");
  return removed && inserted ? 0 : 1;
}
