// GridEditor: sizing the grid and declaring its columns into the attribute rows.
#include "grid/editor/GridEditor.h"

#include "companion/DatabaseHelper.h"
#include "companion/VbText.h"
#include "frame/Error.h"

namespace tq7 {

int16_t GridEditor::SetFirst(int32_t Cols) {
  SpreadSurface& s = mfgData;
  // Hidden while it is rebuilt; loading the records shows it again.
  step([&] { s.setVisible(false); });
  step([&] { s.setMaxCols(Cols == 0 ? 200 : Cols); });
  step([&] { s.setMaxRows(1); });
  // The value table and the lock table, dimensioned once.
  step([&] { Matrix1.Dimension(s.MaxRows() + 1, s.MaxCols() + 1, 1, 1); });
  step([&] { locks().Dimension(s.MaxRows() + 1, s.MaxCols() + 1, 1, 1); });
  step([&] { Matrix1.Clear(); });
  step([&] { locks().Clear(); });
  step([&] { Matrix1.SetMode(1); });
  step([&] { locks().SetMode(1); });
  step([&] { dbHelper().SetupGrid(s, 1); });
  // Column 0 carries the running numbers.
  step([&] { s.setColWidth(0, 300); });
  numberDigits_ = 0;  // fitted again to the numbers of the new rows
  step([&] { s.SetActiveCell(1, 1); });
  for (int32_t r = 1; r <= s.MaxRows(); ++r) {
    step([&] {
      s.SetText(attr::RecordState, r, QString());
      s.setRowHeight(r, defaultRowHeight_);
      s.setRow(r);
      s.setRowHidden(false);
    });
  }
  numberRows();
  setbuttons();
  step([&] { s.SetActiveCell(1, 1); });
  step([&] { Text1.setVisible(false); });
  // The row gets its columns' looks and defaults.
  FillINI();
  // Two decimals until a column declares its own; a column of width 0 stays hidden.
  const int32_t keepCol = s.Col();
  for (int32_t c = 1; c <= s.MaxCols(); ++c) {
    step([&] {
      s.SetText(c, attr::NumberOfDecimal, QStringLiteral("2"));
      s.SetText(c, attr::DisplayDecimal, QStringLiteral("2"));
      s.setCol(c);
      s.setColHidden(s.ColWidth(c) == 0);
    });
  }
  s.setCol(keepCol);
  return 0;
}

int16_t GridEditor::AddField(int16_t Column, const QString& FieldName, const QString& FieldType, int16_t PrimaryKey,
                             const QString& Caption, int16_t DisplayDecimal, const QString& MinCon, double MinValue,
                             const QString& MaxCon, double MaxValue, int16_t MaxLength, int16_t CanDuplicate,
                             int16_t CanBlank, int16_t CanEdit, int16_t CanDeleteAlias, int16_t Width,
                             int16_t TitleAlign, int16_t RowAlign, const QString& LabelDataList, double DefaultValue,
                             const QString& DefaultText, const QString& ShellCommand, const QString& DisplayField) {
  return addField3(Column, FieldName, FieldType, PrimaryKey, Caption, DisplayDecimal, MinCon, MinValue, MaxCon,
                   MaxValue, MaxLength, CanDuplicate, CanBlank, CanEdit, CanDeleteAlias, Width, TitleAlign, RowAlign,
                   LabelDataList, DefaultValue, DefaultText, ShellCommand, DisplayField, 0, 0, QString(), QString(), 0);
}

int16_t GridEditor::addField2(int16_t Column, const QString& FieldName, const QString& FieldType, int16_t PrimaryKey,
                              const QString& Caption, int16_t DisplayDecimal, const QString& MinCon, double MinValue,
                              const QString& MaxCon, double MaxValue, int16_t MaxLength, int16_t CanDuplicate,
                              int16_t CanBlank, int16_t CanEdit, int16_t CanDeleteAlias, int16_t Width,
                              int16_t TitleAlign, int16_t RowAlign, const QString& LabelDataList,
                              double DefaultValue, const QString& DefaultText, const QString& ShellCommand,
                              const QString& DisplayField, int16_t NumberOfDecimal, int32_t ListWidth,
                              const QString& GroupCaption1, const QString& GroupCaption2) {
  return addField3(Column, FieldName, FieldType, PrimaryKey, Caption, DisplayDecimal, MinCon, MinValue, MaxCon,
                   MaxValue, MaxLength, CanDuplicate, CanBlank, CanEdit, CanDeleteAlias, Width, TitleAlign, RowAlign,
                   LabelDataList, DefaultValue, DefaultText, ShellCommand, DisplayField, NumberOfDecimal, ListWidth,
                   GroupCaption1, GroupCaption2, 0);
}

int16_t GridEditor::addField3(int16_t Column, const QString& FieldName, const QString& FieldType, int16_t PrimaryKey,
                              const QString& Caption, int16_t DisplayDecimal, const QString& MinCon, double MinValue,
                              const QString& MaxCon, double MaxValue, int16_t MaxLength, int16_t CanDuplicate,
                              int16_t CanBlank, int16_t CanEdit, int16_t CanDeleteAlias, int16_t Width,
                              int16_t TitleAlign, int16_t RowAlign, const QString& LabelDataList,
                              double DefaultValue, const QString& DefaultText, const QString& ShellCommand,
                              const QString& /*DisplayField: accepted, kept nowhere*/, int16_t NumberOfDecimal,
                              int32_t ListWidth, const QString& GroupCaption1, const QString& GroupCaption2,
                              int16_t StopBlankMove) {
  SpreadSurface& s = mfgData;
  const int32_t col = Column;
  auto put = [&](int32_t row, const QString& text) { step([&] { s.SetText(col, row, text); }); };
  auto num = [](qint64 n) { return QString::number(n); };

  step([&] { s.setVisible(false); });
  if (col > highestColumn_) highestColumn_ = col;
  // The pointer moves while the attributes are written; it is put back at the end.
  const int32_t keepRow = s.Row(), keepCol = s.Col();
  step([&] {
    if (col > s.MaxCols()) s.setMaxCols(col);
  });
  step([&] {
    s.setCol(col);
    s.setColHidden(false);
  });
  // A group caption shows for the whole grid as soon as one column has one.
  put(attr::FieldName, FieldName);
  put(attr::GroupCaption1, GroupCaption1);
  if (!GroupCaption1.isEmpty()) step([&] { s.setRowHeight(attr::GroupCaption1, defaultRowHeight_); });
  put(attr::GroupCaption2, GroupCaption2);
  if (!GroupCaption2.isEmpty()) step([&] { s.setRowHeight(attr::GroupCaption2, defaultRowHeight_); });
  put(attr::PrimaryKey, num(PrimaryKey));
  if (PrimaryKey == 1) {
    primaryKeyColumn_ = Column;
    primaryKeyName_ = FieldName;
  }
  put(attr::CanDuplicate, num(CanDuplicate));
  put(attr::FieldType, FieldType);
  // A running number is never shown: its width is 0, whatever was asked.
  if (FieldType == QLatin1String("AUTONUMBER")) {
    step([&] { s.setColWidth(col, 0); });
  } else {
    put(attr::ShellCommand, ShellCommand);
    // Types with a fixed text form have a fixed length, whatever was asked.
    int32_t length = MaxLength;
    if (FieldType == QLatin1String("HOUR") || FieldType == QLatin1String("TIME"))
      length = 5;
    else if (FieldType == QLatin1String("DAYTIME"))
      length = 20;
    else if (FieldType == QLatin1String("YESNO") || FieldType == QLatin1String("LABELLIST"))
      length = 2;
    else if (FieldType == QLatin1String("PERIOD") || FieldType == QLatin1String("DATE"))
      length = 10;
    else if (FieldType == QLatin1String("YEAR"))
      length = 4;
    put(attr::MaxLength, num(length));
    // A required column shows its caption in bold.
    put(attr::CanEdit, num(CanEdit));
    put(attr::CanBlank, num(CanBlank));
    if (CanBlank != 1) {
      step([&] {
        s.setRow(attr::Caption);
        s.setFontBold(true);
      });
    }
    put(attr::CanDeleteAlias, num(CanDeleteAlias));
    put(attr::StopBlankMove, num(StopBlankMove));
    put(attr::NumberOfDecimal, num(NumberOfDecimal));
    put(attr::DisplayDecimal, num(DisplayDecimal));
    put(attr::DefaultValue, vb::formatNumber(DefaultValue, NumberOfDecimal, true));
    put(attr::DefaultText, DefaultText);
    put(attr::MinCon, MinCon);
    put(attr::MaxCon, MaxCon);
    put(attr::MinValue, vb::shortestText(MinValue));
    put(attr::MaxValue, vb::shortestText(MaxValue));
    // The labels alone, without their descriptions; an empty entry is one blank.
    QStringList labels;
    for (QString entry : vb::Split(LabelDataList, QStringLiteral(","))) {
      if (entry.isEmpty()) entry = QStringLiteral(" ");
      labels.append(vb::Split(entry, QStringLiteral(";")).value(0));
    }
    put(attr::Labels, labels.join(QLatin1Char(',')));
    // The whole list too, descriptions included, for the drop-down.
    put(attr::LabelDataList, LabelDataList);
    put(attr::ListWidth, num(ListWidth));
    step([&] { s.setColWidth(col, Width); });
  }
  // A column of width 0 is hidden, and the reverse.
  step([&] {
    s.setCol(col);
    s.setColHidden(s.ColWidth(col) == 0);
  });
  // The caption and its alignment.
  put(attr::Caption, Caption);
  step([&] {
    s.setRow(attr::Caption);
    applyAlignment(TitleAlign, true);
  });
  // The whole column's alignment, kept in the attribute rows for new rows.
  step([&] {
    s.setRow(-1);
    applyAlignment(RowAlign, false);
    s.SetText(col, attr::HAlign, num(s.TypeHAlign()));
    s.SetText(col, attr::VAlign, num(s.TypeVAlign()));
  });
  step([&] {
    s.setRow(-1);
    s.setLock(true);
  });
  s.setRow(keepRow);
  s.setCol(keepCol);
  if (!declaredWidths_.isEmpty()) declaredWidths_ += QLatin1Char(';');
  declaredWidths_ += QString::number(Column) + QLatin1Char(',') + QString::number(Width);
  return 0;
}

// flexAlign value -> the surface's horizontal (0 left, 1 right, 2 centre) and vertical
// (0 top, 1 bottom, 2 centre) alignment. A caption is always centred vertically.
void GridEditor::applyAlignment(int16_t flexAlign, bool titleRow) {
  static const int16_t h[] = {0, 0, 0, 2, 2, 2, 1, 1, 1};
  static const int16_t v[] = {0, 2, 1, 0, 2, 1, 0, 2, 1};
  if (flexAlign < 0 || flexAlign > 8) return;  // General, or a value outside the set: no change
  mfgData.setTypeHAlign(h[flexAlign]);
  mfgData.setTypeVAlign(titleRow ? 2 : v[flexAlign]);
}

bool GridEditor::IsColHidden(int32_t iColumn) {
  bool hidden = false;
  step([&] {
    const int32_t keep = mfgData.Col();
    mfgData.setCol(iColumn);
    hidden = mfgData.ColHidden();
    mfgData.setCol(keep);
  });
  return hidden;
}

double GridEditor::SetColumnWidth(int32_t iColumn, double Value) {
  double width = 0;
  step([&] {
    const int32_t keepRow = mfgData.Row(), keepCol = mfgData.Col();
    mfgData.setColWidth(iColumn, Value);
    mfgData.setCol(iColumn);
    mfgData.setColHidden(mfgData.ColWidth(iColumn) == 0);
    width = mfgData.ColWidth(iColumn);
    mfgData.setRow(keepRow);
    mfgData.setCol(keepCol);
  });
  return width;
}

}  // namespace tq7
