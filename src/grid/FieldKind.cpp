#include "grid/FieldKind.h"

namespace tq7 {

FieldKind fieldKind(const QString& word) {
  if (word.isEmpty()) return FieldKind::None;
  auto is = [&word](const char* w) { return word == QLatin1String(w); };
  switch (word.front().unicode()) {
    case u'A':
      if (is("AUTONUMBER")) return FieldKind::AutoNumber;
      if (is("ABSNUMBER")) return FieldKind::AbsNumber;
      break;
    case u'C':
      if (is("CHECK")) return FieldKind::Check;
      if (is("COLOR")) return FieldKind::Color;
      break;
    case u'D':
      if (is("DATE")) return FieldKind::Date;
      if (is("DATETIME")) return FieldKind::DateTime;
      if (is("DAYTIME")) return FieldKind::DayTime;
      break;
    case u'H':
      if (is("HOUR")) return FieldKind::Hour;
      break;
    case u'L':
      if (is("LABELLIST")) return FieldKind::LabelList;
      break;
    case u'N':
      if (is("NUMBER")) return FieldKind::Number;
      break;
    case u'P':
      if (is("PERIOD")) return FieldKind::Period;
      break;
    case u'T':
      if (is("TEXT")) return FieldKind::Text;
      if (is("TIME")) return FieldKind::Time;
      break;
    case u'Y':
      if (is("YEAR")) return FieldKind::Year;
      if (is("YESNO")) return FieldKind::YesNo;
      break;
    default: break;
  }
  return FieldKind::Other;
}

}  // namespace tq7
