#pragma once
// The database side of the companion helpers: reference and existence checks and look-ups on a
// connection opened for the one task, and the sheet chores the grids and views share (column
// set-up, block colouring, running numbers, incremental find).
//
// The checks that answer a status (TableExists, FieldExists) or a text (LookupValue) answer 0 or
// empty when the database cannot be asked; CheckReferences and CheckReferencedMessage let the
// failure through as tq7::Error, so the caller's step decides.
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <cstdint>

namespace tq7 {

class GridSurface;

class DatabaseHelper {
 public:
  // Language of the find question: 0 Thai, anything else English.
  int16_t LanguageID = 0;

  // The name of a table whose foreign key, on a column that refers to KeyFieldName, still holds
  // KeyValue; empty when none does. The references come from the database's own catalog. With a
  // TableName only the keys that refer to that table count. A KeyValue that is a string is
  // compared as text, a number as a number, a QDate/QDateTime as an ISO date literal.
  QString CheckReferences(const QVariant& KeyValue, const QString& ConnectionString, const QString& KeyFieldName,
                          const QString& TableName = {});
  // The table-driven form: ReferenceList names the referring tables ("," or ";" between), each
  // holding a column named KeyFieldName. The first one that holds KeyValue is appended to Message.
  void CheckReferencedMessage(const QString& ReferenceList, const QVariant& KeyValue, const QString& KeyFieldName,
                              QString& Message, const QString& ConnectionString);
  // The first ResultField of TableName where KeyField equals Value (and the Filter condition, when
  // given, holds); empty for no row, a NULL or a failure. A1 and A2 are accepted and have no effect.
  QString LookupValue(const QString& Filter, int32_t A1, int32_t A2, const QString& ResultField, const QVariant& Value,
                      const QString& KeyField, const QString& TableName, const QString& ConnectionString);
  // A text made safe to stand between single quotes in a statement.
  static QString SqlText(const QString& Text);
  // 1 when the database has the table (or view), else 0; names compare without regard to case.
  int16_t TableExists(const QString& TableName, const QString& ConnectionString, int16_t Mode = 0);
  // 1 when the table has the field, else 0. A load asks this for every field of every record, so
  // the columns of a table, once read, answer again without a new connection; a field not among
  // them is looked for in the database afresh (it may have been added since).
  int16_t FieldExists(const QString& FieldName, const QString& TableName, const QString& ConnectionString,
                      int16_t Mode = 0);

  // The row of the next shown cell in column Col, after Row and round to the top, whose text
  // begins with Text (case ignored); Row itself when none does. An empty Text asks the user
  // through the input box, offering the last text asked for; an empty answer gives Row.
  // Mode (5 in the grids, 10 in the views) and Flag are accepted and have no effect.
  int32_t FindRow(GridSurface& Surface, int32_t Row, int32_t Col, const QString& Text, int16_t Mode = 5,
                  int16_t Flag = 1);
  // Readies column Col of a view: static, locked text, aligned by Alignment (6 right, any other
  // code left), Width wide, with Heading in row 0 aligned by HeadingAlign (the grid alignment
  // codes: 0-2 left, 3-5 centre, 6-8 right, 9 as it was). FieldType and Flag have no effect. The
  // sheet's pointer is put back.
  void SetupColumn(GridSurface& Surface, const QString& Heading, int32_t Col, int16_t HeadingAlign,
                   int16_t Alignment, double Width, int16_t FieldType, int16_t Flag = 1);
  // Colours the block between two corners (in either order). A BackColor or ForeColor that is
  // empty leaves that colour alone. With FillHeight above 0 the rows go in stripes: FillHeight
  // rows coloured, SkipHeight rows passed over, and again. A ColumnList ("2,5;7") limits the
  // columns coloured to those it names inside the block. The sheet's pointer is put back.
  void FillBlock(GridSurface& Surface, const QVariant& BackColor, const QVariant& ForeColor, int32_t Row1,
                 int32_t Col1, int32_t Row2, int32_t Col2, int16_t FillHeight = 0, int16_t SkipHeight = 0,
                 const QString& ColumnList = {}, int16_t Flag = 1);
  // The common look of a sheet: grid lines both ways, running numbers centred in column 0.
  void SetupGrid(GridSurface& Surface, int16_t Flag = 1);
  // Writes the running numbers into column 0: 1, 2, ... over the rows of height above 0, an empty
  // text on rows of height 0. Only the rows from the first one whose layout changed since the last
  // numbering are written, so a grid that numbers after each appended row stays linear. The
  // arguments after the sheet (1, -1, 0, 0, 0, 1 from every caller) have no effect.
  void NumberRows(GridSurface& Surface, int16_t A1 = 1, int32_t A2 = -1, int32_t A3 = 0, int32_t A4 = 0,
                  int32_t A5 = 0, int16_t A6 = 1);

 private:
  QString lastFind_;
  QHash<QString, QStringList> columnsSeen_;  // connection string and table -> columns, lower case
};

}  // namespace tq7
