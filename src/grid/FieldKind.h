#pragma once
// The field type words of a column declaration, told apart once per cell cheaply. A word that is
// not one of these (a lower-case one included) is Other, and an empty one None.
#include <QString>

namespace tq7 {

enum class FieldKind {
  None, Other, AutoNumber, Number, AbsNumber, Year, Text, YesNo, Check, LabelList, Date, Period, DateTime, Time,
  Hour, DayTime, Color
};

FieldKind fieldKind(const QString& word);

}  // namespace tq7
