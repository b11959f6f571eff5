#include "companion/db/ResultTable.h"

#include <gtest/gtest.h>

using namespace tq7::db;

// Large enough that every store leaves the heap for its own mapping and grows there.
TEST(DbResultTable, LargeColumnsKeepEveryValueThroughGrowthAndTrimming) {
  ResultTable t({QStringLiteral("n"), QStringLiteral("s"), QStringLiteral("late")});
  const int rows = 200000;
  for (int r = 0; r < rows; ++r) {
    if (r % 5 == 0) t.appendNull(0);
    else t.appendInt(0, int64_t(r) * 1000003);
    const QByteArray s = QStringLiteral("แถว %1").arg(r).toUtf8();
    t.appendText(1, s.constData(), size_t(s.size()));
    // A column that stays null for long, then turns real: the nulls before stay null.
    if (r < rows - 10) t.appendNull(2);
    else t.appendDouble(2, r + 0.5);
    t.endRow();
  }
  t.finish();
  ASSERT_EQ(t.rowCount(), rows);
  for (int r : {0, 1, 4, 5, 65535, 65536, 123457, rows - 11, rows - 10, rows - 1}) {
    if (r % 5 == 0) EXPECT_TRUE(t.value(r, 0).isNull()) << r;
    else EXPECT_EQ(t.value(r, 0).toLongLong(), int64_t(r) * 1000003) << r;
    EXPECT_EQ(t.value(r, 1).toString(), QStringLiteral("แถว %1").arg(r)) << r;
    if (r < rows - 10) EXPECT_TRUE(t.isNull(r, 2)) << r;
    else EXPECT_DOUBLE_EQ(t.value(r, 2).toDouble(), r + 0.5) << r;
  }
  EXPECT_EQ(t.type(0), FieldType::Integer);
  EXPECT_EQ(t.type(1), FieldType::Text);
  EXPECT_EQ(t.type(2), FieldType::Double);
  // Trimmed to the data: 8 bytes a number, the text bytes and an end offset, a bit per null flag.
  size_t text = 0;
  for (int r = 0; r < rows; ++r) text += size_t(QStringLiteral("แถว %1").arg(r).toUtf8().size());
  const size_t expected = size_t(rows) * (8 + 8 + 8) + text;
  EXPECT_GE(t.memoryBytes(), expected);
  EXPECT_LT(t.memoryBytes(), expected + expected / 20);
}

TEST(DbResultTable, KindChangesMidColumnKeepEachValue) {
  ResultTable t({QStringLiteral("v")});
  t.appendText(0, "ab", 2);
  t.appendNull(0);
  t.appendInt(0, 7);
  t.appendDouble(0, 1.5);
  t.appendBlob(0, "\0x", 2);
  t.appendText(0, "", 0);
  for (int i = 0; i < 6; ++i) t.endRow();
  EXPECT_EQ(t.type(0), FieldType::Variant);
  EXPECT_EQ(t.value(0, 0).toString(), QStringLiteral("ab"));
  EXPECT_TRUE(t.value(1, 0).isNull());
  EXPECT_EQ(t.value(2, 0).toLongLong(), 7);
  EXPECT_EQ(t.value(2, 0).typeId(), QMetaType::LongLong);
  EXPECT_DOUBLE_EQ(t.value(3, 0).toDouble(), 1.5);
  EXPECT_EQ(t.value(4, 0).toByteArray(), QByteArray("\0x", 2));
  EXPECT_FALSE(t.value(5, 0).isNull());
  EXPECT_EQ(t.value(5, 0).toString(), QString());
  EXPECT_TRUE(t.value(6, 0).isNull());  // beyond the last row

  ResultTable u({QStringLiteral("n")});
  u.appendInt(0, 3);
  u.appendNull(0);
  u.appendDouble(0, 0.25);
  for (int i = 0; i < 3; ++i) u.endRow();
  EXPECT_EQ(u.type(0), FieldType::Double);
  EXPECT_DOUBLE_EQ(u.value(0, 0).toDouble(), 3.0);
  EXPECT_TRUE(u.value(1, 0).isNull());
  u.setDeclaredType(0, FieldType::Date);
  EXPECT_EQ(u.type(0), FieldType::Date);
}
