// GridEditor: whether a record may be saved, and why not.
#include "grid/editor/GridEditor.h"

#include "companion/StandardHelper.h"
#include "companion/VbText.h"
#include "frame/Error.h"
#include "grid/FieldKind.h"

namespace tq7 {

namespace {

// The types whose value, not text, is what a record holds.
bool comparesByValue(FieldKind k) {
  switch (k) {
    case FieldKind::AbsNumber:
    case FieldKind::Number:
    case FieldKind::Period:
    case FieldKind::Date:
    case FieldKind::DateTime:
    case FieldKind::Time:
    case FieldKind::Year:
    case FieldKind::Hour:
    case FieldKind::DayTime: return true;
    default: return false;
  }
}

// A limit condition: ">", "<", "=", "<>"; any other word sets none. True when the value breaks it.
bool breaks(const QString& condition, double value, double limit) {
  if (condition == QLatin1String(">")) return !(value > limit);
  if (condition == QLatin1String("<")) return !(value < limit);
  if (condition == QLatin1String("=")) return !(value == limit);
  if (condition == QLatin1String("<>")) return !(value != limit);
  return false;
}

}  // namespace

int16_t GridEditor::CheckRecordStatus(int32_t Record) {
  if (highestColumn_ < 1) return 0;
  int32_t keyCount = 0, keyBlank = 0, errorCount = 0, requiredCount = 0, optionalFilled = 0, optionalCount = 0;
  const int32_t row = Record2Row(Record);
  StandardHelper& h = helper();
  for (int32_t col = 1; col <= Column2Col(highestColumn_); ++col) {
    const FieldKind kind = fieldKind(attribute(attr::FieldType, col));
    if (kind == FieldKind::None) continue;
    step([&] {
      const QString text = mfgData.GetText(col, row);
      const double value = Matrix1.GetValue(row, col);
      // A key column, and whether it is blank.
      if (attribute(attr::PrimaryKey, col) == QLatin1String("1")) {
        ++keyCount;
        if (text.isEmpty()) ++keyBlank;
      }
      // A column that takes no duplicates: the same value in another live record is an error.
      if (attribute(attr::CanDuplicate, col) != QLatin1String("1")) {
        const QVariant checkValue = comparesByValue(kind) ? QVariant(value) : QVariant(text);
        if (CheckDulicate(col, checkValue, Record)) ++errorCount;
      }
      // Optional: every optional column counts as filled or not, whatever its type.
      if (attribute(attr::CanBlank, col) == QLatin1String("1")) {
        ++optionalCount;
        if (!text.isEmpty()) ++optionalFilled;
        return;
      }
      // Required: an empty text, or a zero where a number or date belongs, is an error.
      ++requiredCount;
      bool checkLimits = false;
      switch (kind) {
        case FieldKind::Text:
        case FieldKind::LabelList:
          if (text.isEmpty()) ++errorCount;
          break;
        case FieldKind::AbsNumber:
        case FieldKind::Number:
        case FieldKind::Year:
        case FieldKind::Hour:
        case FieldKind::Date:
        case FieldKind::Period:
        case FieldKind::DayTime:
          if (value == 0)
            ++errorCount;
          else
            checkLimits = true;
          break;
        case FieldKind::Time: checkLimits = true; break;
        default: break;  // required, and never failing
      }
      // Both limits, the lower and the upper.
      if (checkLimits) {
        if (breaks(attribute(attr::MinCon, col), value, h.TextToDouble(attribute(attr::MinValue, col)))) ++errorCount;
        if (breaks(attribute(attr::MaxCon, col), value, h.TextToDouble(attribute(attr::MaxValue, col)))) ++errorCount;
      }
    });
  }
  (void)optionalCount;  // counted, as the record's columns are, and read by nothing
  // A comparison of counts: a grid without required and key columns never answers 1.
  if (errorCount == requiredCount && keyCount == keyBlank) return optionalFilled < 2 ? 0 : -3;
  if (errorCount == 0) return keyBlank == 0 ? 1 : -1;
  return keyBlank == 0 ? -2 : -3;
}

bool GridEditor::CheckDulicate(int32_t CheckColumn, const QVariant& CheckValue, std::optional<int32_t> SkipRecord) {
  bool found = false;
  step([&] {
    const bool asText = fieldKind(attribute(attr::FieldType, CheckColumn)) == FieldKind::Text;
    const bool valueIsText = CheckValue.typeId() == QMetaType::QString;
    const QString wanted = asText ? vb::UCase(CheckValue.toString()) : QString();
    // A variant comparison: a date by its serial, True as -1.
    const double number = valueIsText ? 0 : vb::CDbl(CheckValue);
    for (int32_t row = 1; row <= mfgData.MaxRows(); ++row) {
      if (mfgData.cellText(attr::RecordState, row) == QLatin1String("D")) continue;
      if (SkipRecord && Row2Record(row) == *SkipRecord) continue;
      if (asText) {
        if (vb::UCase(mfgData.cellText(CheckColumn, row)) == wanted) {
          found = true;
          return;
        }
      } else if (!valueIsText && Matrix1.GetValue(row, CheckColumn) == number) {
        // A text against a number is never equal.
        found = true;
        return;
      }
    }
  });
  return found;
}

QString GridEditor::CheckData() {
  QString caption;
  bool remembered = false;
  for (int32_t row = 1; row <= mfgData.MaxRows(); ++row) {
    step([&] {
      if (mfgData.cellText(attr::RecordState, row) != QLatin1String("E")) return;
      if (mfgData.cellText(primaryKeyColumn_, row).isEmpty()) return;
      for (int32_t col = 1; col <= mfgData.MaxCols(); ++col) {
        if (attribute(attr::FieldName, col).isEmpty()) continue;
        if (attribute(attr::CanBlank, col) == QLatin1String("1")) continue;
        if (!mfgData.cellText(col, row).isEmpty()) continue;
        // The last offending row wins; within it, its first offending column.
        caption = attribute(attr::Caption, col);
        remembered = true;
        return;
      }
    });
  }
  return remembered ? QString::fromUtf8("กรุณาระบุ ") + caption + QString::fromUtf8(" ให้ถูกต้อง") : QString();
}

// Runs the check and keeps its answer to itself, so that an application asking here gets no message.
QString GridEditor::ValidData() {
  CheckData();
  return QString();
}

QString GridEditor::GETErrorMessage(int32_t iRecord, int32_t iColumn, int32_t iTotalRecord, int16_t ForceLanguage) {
  int16_t language = LanguageID() != 0 ? 1 : 0;
  if (ForceLanguage != -1) language = ForceLanguage > 1 ? 1 : ForceLanguage;
  const bool english = language != 0;
  if (iRecord == 0 && iColumn == 0 && iTotalRecord == 0) {
    return english ? QStringLiteral("Please fill some record before save.")
                   : QString::fromUtf8("กรุณาใส่ข้อมูลในตาราง ก่อนการบันทึก");
  }
  QString caption;
  step([&] { caption = attribute(attr::Caption, Column2Col(iColumn)); });
  const QString message =
      english ? QStringLiteral("Please Check [ ") + caption +
                    QStringLiteral(" ] \r\n First Record (if only 1 record) or On highlight Record / At Column Cursor appear")
              : QString::fromUtf8("กรุณาตรวจสอบ [ ") + caption +
                    QString::fromUtf8(" ] \r\n บรรทัดแรก (กรณี 1 รายการ) หรือ บรรทัดที่ แสดงแถบสี / ตำแหน่งที่ Cursor อยู่");
  step([&] { mfgData.setCol(Column2Col(iColumn)); });
  if (iRecord > 0) setRecord(iRecord);
  return message;
}

int16_t GridEditor::CleanRecord(int32_t Record) {
  const int32_t row = Record2Row(Record);
  for (int32_t col = 1; col <= mfgData.MaxCols(); ++col) {
    step([&] { mfgData.SetText(col, row, QString()); });
    step([&] { Matrix1.SetValue(row, col, 0); });
  }
  FillINI2(row);
  return 0;
}

}  // namespace tq7
