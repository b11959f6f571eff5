#include "SampleDatabase.h"

#include "companion/IniFile.h"
#include "companion/VbText.h"
#include "companion/db/Connection.h"
#include "frame/Error.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QStringList>

#include <cmath>

namespace gallery {
namespace {

struct Item {
  const char* code;
  const char* name;
  double price;
};

// A grocery wholesaler's price list: enough variety that the grid shows long and short Thai names,
// prices under a hundred and amounts in the thousands.
const Item kItems[] = {
    {"RC-005", "ข้าวหอมมะลิ 5 กก.", 235.00},       {"FS-700", "น้ำปลาแท้ 700 มล.", 42.50},
    {"CF-200", "กาแฟสำเร็จรูป 200 ก.", 189.00},     {"SG-001", "น้ำตาลทราย 1 กก.", 28.00},
    {"OL-1L", "น้ำมันพืช 1 ลิตร", 56.00},           {"NM-030", "บะหมี่กึ่งสำเร็จรูป (ลัง 30 ซอง)", 180.00},
    {"EG-030", "ไข่ไก่ เบอร์ 2 (แผง 30 ฟอง)", 125.00}, {"DW-600", "น้ำดื่ม 600 มล. (แพ็ค 12)", 60.00},
    {"SY-500", "ซีอิ๊วขาว 500 มล.", 33.00},         {"MK-1L", "นมสด UHT 1 ลิตร", 52.00},
    {"TP-010", "กระดาษทิชชู (แพ็ค 10 ม้วน)", 119.00}, {"DT-900", "ผงซักฟอก 900 ก.", 79.00},
    {"SP-080", "สบู่ก้อน 80 ก.", 17.00},             {"TE-100", "ชาเขียวใบ 100 ก.", 95.00},
    {"CH-350", "ซอสพริก 350 ก.", 27.50},             {"RN-015", "เส้นหมี่อบแห้ง 500 ก.", 38.00},
};
constexpr int kItemCount = int(sizeof kItems / sizeof kItems[0]);

// Lines per invoice; INV-0001 is the one the gallery shows, long enough to fill the page.
const struct {
  const char* no;
  int lines;
  int year, month, day;
} kInvoices[] = {{"INV-0001", 16, 2024, 3, 15}, {"INV-0002", 10, 2024, 4, 2}, {"INV-0003", 8, 2024, 5, 20},
                 {"INV-0004", 6, 2024, 6, 7}};

QString sqlText(const QString& s) { return QLatin1Char('\'') + QString(s).replace(QLatin1Char('\''), QStringLiteral("''")) + QLatin1Char('\''); }

QString number(double v) { return QString::number(v, 'f', 2); }

QString remarkFor(int line) {
  switch (line % 7) {
    case 0: return QStringLiteral("ส่งก่อนเที่ยง");
    case 3: return QStringLiteral("ของแถม 1 ชิ้น");
    case 5: return QStringLiteral("Back order");
    default: return QString();
  }
}

// The statements that make the sample: the invoice lines and the control tables.
QStringList sampleStatements() {
  QStringList sql;
  sql << QStringLiteral(
      "CREATE TABLE InvoiceLine (LineID INTEGER PRIMARY KEY, InvoiceNo TEXT, ItemCode TEXT, ItemName TEXT, "
      "Qty REAL, UnitPrice REAL, Amount REAL, DeliveryDate REAL, PayType INTEGER, Paid INTEGER, Remark TEXT)");
  int lineId = 0;
  for (const auto& inv : kInvoices) {
    for (int i = 0; i < inv.lines; ++i) {
      ++lineId;
      const Item& item = kItems[(lineId * 5 + i) % kItemCount];
      // Quantities from a few pieces to whole cartons, so some amounts reach the thousands.
      const double qty = double(1 + (lineId * 7) % 24) * ((lineId % 4 == 0) ? 2.5 : 1.0);
      const double amount = std::round(qty * item.price * 100.0) / 100.0;
      // Deliveries over the fortnight after the invoice date.
      const double delivery = tq7::vb::DateSerial(inv.year, inv.month, inv.day + (i % 5) * 3);
      const int payType = lineId % 3;  // position in "ส;สด,อ;โอน,บ;บัตร"
      const int paid = (lineId % 3 == 1) ? 0 : 1;
      const QString remark = remarkFor(lineId);
      sql << QStringLiteral("INSERT INTO InvoiceLine VALUES (%1, %2, %3, %4, %5, %6, %7, %8, %9, %10, %11)")
                 .arg(lineId)
                 .arg(sqlText(QString::fromLatin1(inv.no)), sqlText(QString::fromLatin1(item.code)),
                      sqlText(QString::fromUtf8(item.name)), number(qty), number(item.price), number(amount))
                 .arg(delivery, 0, 'f', 0)
                 .arg(payType)
                 .arg(paid)
                 .arg(remark.isEmpty() ? QStringLiteral("NULL") : sqlText(remark));
    }
  }

  // The user's language: user 1 works in Thai, user 2 in English.
  sql << QStringLiteral("CREATE TABLE TQ7TSystemUser (TSyUName TEXT, TSyUUserID INTEGER, TSyUValue REAL)")
      << QStringLiteral("INSERT INTO TQ7TSystemUser VALUES ('LanguageID', 1, 0)")
      << QStringLiteral("INSERT INTO TQ7TSystemUser VALUES ('LanguageID', 2, 1)")
      << QStringLiteral("INSERT INTO TQ7TSystemUser VALUES ('DisableEditHighlight', 1, 0)")
      << QStringLiteral("CREATE TABLE TQ7TSystem (TSysName TEXT, TSysValue REAL)")
      << QStringLiteral("INSERT INTO TQ7TSystem VALUES ('LanguageID', 0)")
      // Legend colours, 0x00BBGGRR: a pale green for paid lines, a pale orange for unpaid ones.
      << QStringLiteral("INSERT INTO TQ7TSystem VALUES ('Paid', 13434828)")
      << QStringLiteral("INSERT INTO TQ7TSystem VALUES ('Unpaid', 11389439)")
      << QStringLiteral("CREATE TABLE TQ7TTable (TTblName TEXT, TTblAlias TEXT)")
      << QStringLiteral("INSERT INTO TQ7TTable VALUES ('InvoiceLine', 'รายการใบแจ้งหนี้')")
      // User 1 sits in the administrators' group, so the format menu offers the global format too.
      << QStringLiteral("CREATE TABLE TQ7TGroupMB (TGrMTGroID INTEGER, TGrMTUsrID INTEGER)")
      << QStringLiteral("INSERT INTO TQ7TGroupMB VALUES (-1, 1)")
      << QStringLiteral("INSERT INTO TQ7TGroupMB VALUES (5, 2)")
      << QStringLiteral("CREATE TABLE Tq7TOption (TOptName TEXT, TOptAlias TEXT)")
      << QStringLiteral("INSERT INTO Tq7TOption VALUES ('Paid', 'ชำระแล้ว')")
      << QStringLiteral("INSERT INTO Tq7TOption VALUES ('Unpaid', 'ค้างชำระ')");
  return sql;
}

// The browse page's sales: 100,000 rows with Thai and English customers, ISO dates (so that a date
// condition compares in quotes), amounts, a paid state and a sales channel. Made by the engine
// itself, as a database made by an earlier run may lack it.
void addBrowseSales(tq7::db::Connection& conn) {
  if (conn.tables().contains(QStringLiteral("BrowseSales"), Qt::CaseInsensitive)) return;
  conn.Execute(QStringLiteral(
      "CREATE TABLE BrowseSales (SaleID INTEGER PRIMARY KEY, Customer TEXT, SaleDate TEXT, Amount REAL, "
      "Paid INTEGER, Channel INTEGER)"));
  conn.Execute(QString::fromUtf8(
      "INSERT INTO BrowseSales WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 100000) "
      "SELECT i, CASE i % 10 WHEN 0 THEN 'บริษัท สยามอาหาร จำกัด' WHEN 1 THEN 'Bangkok Trading Co., Ltd.' "
      "WHEN 2 THEN 'ร้านป้าแดงของชำ' WHEN 3 THEN 'Chiang Mai Coffee House' WHEN 4 THEN 'ห้างหุ้นส่วน รุ่งเรืองพาณิชย์' "
      "WHEN 5 THEN 'Phuket Seafood Export' WHEN 6 THEN 'สหกรณ์ออมทรัพย์ครูขอนแก่น' WHEN 7 THEN 'Andaman Resort' "
      "WHEN 8 THEN 'ร้านข้าวแกงเจ๊หมวย' ELSE 'Korat Hardware Supply' END || ' #' || (1 + i % 977), "
      "date('2023-01-01', '+' || (i % 731) || ' day'), round(50 + (i * 7919 % 1000000) / 100.0, 2), "
      "CASE WHEN i % 11 = 0 THEN 2 WHEN i % 3 = 0 THEN 0 ELSE 1 END, i % 3 FROM n"));
}

// The invoice grid's saved format for user 1, as the grid's format menu would have saved it: the
// remark column hidden, the item name widened. Columns: 1 LineID, 2 ItemCode, 3 ItemName, ...,
// 10 Remark; widths in twips.
void writeUserFormat(const QString& folder) {
  tq7::IniFile().WriteKey(folder + QStringLiteral("/TQ7UserFormat.ini"), QStringLiteral("1:GRDINVOICE"),
                          QStringLiteral("10,0;3,4200"));
}

}  // namespace

QString SampleDatabase::connectionString() const { return QStringLiteral("Data Source=") + path; }

SampleDatabase openSampleDatabase() {
  SampleDatabase s;
  s.folder = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
  s.path = s.folder + QStringLiteral("/sample.db");
  if (!QDir().mkpath(s.folder)) {
    s.error = QStringLiteral("cannot make the folder ") + s.folder;
    return s;
  }
  if (QFile::exists(s.path)) {
    try {
      tq7::db::Connection conn;
      conn.Open(s.connectionString());
      addBrowseSales(conn);
    } catch (const tq7::Error& e) {
      s.error = QStringLiteral("sample database: error %1: %2").arg(e.number).arg(e.description);
    }
    return s;
  }

  // Built under a working name and renamed when complete, so that an interrupted first run is
  // simply done again. An empty file is an empty SQLite database.
  const QString part = s.path + QStringLiteral(".part");
  QFile::remove(part);
  {
    QFile f(part);
    if (!f.open(QIODevice::WriteOnly)) {
      s.error = QStringLiteral("cannot create ") + part;
      return s;
    }
  }
  tq7::db::Connection conn;
  try {
    conn.Open(QStringLiteral("Data Source=") + part);
    conn.Execute(QStringLiteral("BEGIN"));
    for (const QString& statement : sampleStatements()) conn.Execute(statement);
    addBrowseSales(conn);
    conn.Execute(QStringLiteral("COMMIT"));
    conn.Close();
    writeUserFormat(s.folder);
  } catch (const tq7::Error& e) {
    conn.Close();
    QFile::remove(part);
    s.error = QStringLiteral("sample database: error %1: %2").arg(e.number).arg(e.description);
    return s;
  }
  if (!QFile::rename(part, s.path)) {
    s.error = QStringLiteral("cannot rename ") + part;
    return s;
  }
  s.created = true;
  return s;
}

}  // namespace gallery
