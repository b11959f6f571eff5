// GridEditor: the source of the records, the finishing of a declared grid, and the load of records
// from a table into the surface and Matrix1.
#include "grid/editor/GridEditor.h"

#include "companion/DatabaseHelper.h"
#include "companion/IniFile.h"
#include "companion/StandardHelper.h"
#include "companion/SystemValues.h"
#include "companion/VbText.h"
#include "companion/db/Connection.h"
#include "companion/db/Recordset.h"
#include "frame/Error.h"
#include "frame/Platform.h"
#include "grid/FieldKind.h"

#include <QDateTime>
#include <cmath>

namespace tq7 {

namespace {

// A field's value as a number, as the classic conversion takes it: dates as their serial, texts
// that hold no number fail with a type mismatch.
QString textOf(const QVariant& v) {
  switch (v.typeId()) {
    case QMetaType::Double: return vb::shortestText(v.toDouble());
    case QMetaType::QDate:
    case QMetaType::QDateTime: return StandardHelper().DateText(vb::CDbl(v));
    default: return v.toString();
  }
}

}  // namespace

// ---- Source and finishing --------------------------------------------------------------------------------

int16_t GridEditor::SetData(const QString& /*Caption*/, const QString& Table, const QString& WHERE,
                            const QString& ORDER, const QString& /*PKLIST*/, int16_t /*ReadOnly*/,
                            const QString& DataConnectionString, const QString& AppConnectionString) {
  RecordCount = 0;
  step([&] { Text1.setVisible(false); });
  dataConnection_ = DataConnectionString;
  appConnection_ = AppConnectionString;
  table_ = Table;
  where_ = WHERE.isEmpty() ? QString() : QStringLiteral(" WHERE ") + WHERE;
  if (!ORDER.isEmpty()) order_ = QStringLiteral(" ORDER BY ") + ORDER;  // an empty order keeps the old one
  return 0;
}

void GridEditor::SetLast(const QString& FolderPathName, const QString& ControlName, const QString& UserID) {
  SetLast2(FolderPathName, ControlName, UserID, QString(), QString());
}

void GridEditor::SetLast2(const QString& FolderPathName, const QString& ControlName, const QString& UserID,
                          const QString& UserConnectionString, const QString& AppConnectionString) {
  SetLast3(FolderPathName, ControlName, UserID, UserConnectionString, AppConnectionString, false);
}

void GridEditor::SetLast3(const QString& FolderPathName, const QString& ControlName, const QString& UserID,
                          const QString& UserConnectionString, const QString& AppConnectionString,
                          bool SkipDefault) {
  step([&] { cmdOption.setVisible(true); });
  userConnection_ = UserConnectionString;
  appConnection_ = AppConnectionString;
  folderPath_ = FolderPathName;
  step([&] { userNumber_ = helper().TextToLong(UserID); });
  // The folder ends in a separator; on this system that is the slash, and a backslash given by
  // an application written for the other one is taken as one too.
  if (!folderPath_.endsWith(QLatin1Char('/')) && !folderPath_.endsWith(QLatin1Char('\\'))) folderPath_ += QLatin1Char('/');
  // The user's language and highlight setting.
  step([&] { setLanguageID(vb::CInt(GetUserSystemValue(userNumber_, QStringLiteral("LanguageID"), userConnection_))); });
  step([&] {
    disableEditHighlight_ =
        vb::CInt(GetUserSystemValue(userNumber_, QStringLiteral("DisableEditHighlight"), userConnection_));
  });
  if (LanguageID() != 0) helpTip_ = QStringLiteral("Press F1 for Help");
  mfgData.setToolTipText(helpTip_);
  controlName_ = ControlName;
  // The user's own column format, else the global one.
  step([&] {
    IniFile ini;
    const QString userFormat =
        ini.ReadKey(folderPath_ + QStringLiteral("TQ7UserFormat.ini"),
                    (QString::number(userNumber_) + QLatin1Char(':') + controlName_).toUpper());
    if (!userFormat.isEmpty()) {
      ApplyColumnFormat(userFormat);
    } else {
      ApplyColumnFormat(ini.ReadKey(folderPath_ + QStringLiteral("TQ7GlobalFormat.ini"),
                                    (QStringLiteral("GLOBAL:") + controlName_).toUpper()));
    }
  });
  joinCaptions();
  step([&] { mfgData.setRow(mfgData.MaxRows()); });
  setColumn(1);
  FillINI();
  resize();
  step([&] { mfgData.setRow(mfgData.MaxRows()); });
  setColumn(1);
  GridReady2(SkipDefault);
}

// Captions that repeat side by side are joined into one span per run, on every shown header row.
void GridEditor::joinCaptions() {
  SpreadSurface& s = mfgData;
  for (int32_t row = -999; row <= -991; ++row) {
    if (s.RowHeight(row) <= 0) continue;
    step([&] {
      int32_t runStart = 1;
      QString caption = s.GetText(1, row);
      for (int32_t col = 2; col <= s.MaxCols(); ++col) {
        const QString text = s.GetText(col, row);
        if (text != caption) {
          s.AddCellSpan(runStart, row, col - runStart, 1);
          runStart = col;
          caption = text;
        }
      }
      s.AddCellSpan(runStart, row, s.MaxCols() - runStart + 1, 1);
    });
  }
}

void GridEditor::ApplyColumnFormat(const QString& Text) {
  if (Text.isEmpty()) return;
  const int32_t keepCol = mfgData.Col();
  for (const QString& entry : vb::Split(Text, QStringLiteral(";"))) {
    if (entry.isEmpty()) continue;
    step([&] {
      const QStringList parts = vb::Split(entry, QStringLiteral(","));
      const int32_t col = vb::CLng(parts.value(0));
      double width = vb::CDbl(parts.value(1));
      if (width < 20) width = 0;
      mfgData.setCol(col);
      mfgData.setColHidden(width == 0);
      mfgData.setColWidth(col, width);
    });
  }
  mfgData.setCol(keepCol);
}

void GridEditor::GridReady() { GridReady2(false); }

void GridEditor::GridReady2(bool SkipDefault) {
  if (!SkipDefault) {
    const int32_t row = mfgData.MaxRows();
    StandardHelper& h = helper();
    for (int32_t col = 1; col <= mfgData.MaxCols(); ++col) {
      step([&] {
        const QString type = attribute(attr::FieldType, col);
        if (type == QLatin1String("LABELLIST") || type == QLatin1String("YESNO")) {
          Matrix1.SetValue(row, col, h.TextToInteger(attribute(attr::DefaultValue, col)));
        } else if (!attribute(attr::DefaultText, col).isEmpty()) {
          mfgData.SetText(col, row, attribute(attr::DefaultText, col));
        } else if (const double v = h.TextToDouble(attribute(attr::DefaultValue, col)); v != 0) {
          Matrix1.SetValue(row, col, v);
        }
      });
    }
  }
  step([&] { mfgData.setVisible(true); });
}

// ---- Load ---------------------------------------------------------------------------------------------------

void GridEditor::FillData() { FillData3(false, false); }
void GridEditor::FillData3(bool UseTableCheck, bool UseFieldCheck) {
  load(true, UseTableCheck, UseFieldCheck, true, true);
}
void GridEditor::AppendData() { AppendData3(false, false); }
void GridEditor::AppendData3(bool UseTableCheck, bool UseFieldCheck) {
  load(false, UseTableCheck, UseFieldCheck, true, false);
}
void GridEditor::AppendData4(bool UseTableCheck, bool UseFieldCheck, bool /*AutoShow: not read*/) {
  load(false, UseTableCheck, UseFieldCheck, false, false);
}

void GridEditor::load(bool ClearFirst, bool UseTableCheck, bool UseFieldCheck, bool AutoShow, bool disableBar) {
  db::Connection data, app;
  step([&] {
    data.setCursorLocation(db::cursor::UseClient);
    data.Open(dataConnection_);
  });
  step([&] {
    app.setCursorLocation(db::cursor::UseClient);
    app.Open(appConnection_);
  });
  if (disableBar) TbrButton.setEnabled(false);
  LoadRecords(ClearFirst, data, app, UseTableCheck, UseFieldCheck, AutoShow);
  if (disableBar) TbrButton.setEnabled(true);
  step([&] { data.Close(); });
  step([&] { app.Close(); });
}

void GridEditor::LoadRecords(bool ClearFirst, db::Connection& data, db::Connection& /*app*/, bool UseTableCheck,
                             bool UseFieldCheck, bool AutoShow) {
  SpreadSurface& s = mfgData;
  int32_t failure = 0;
  try {
    // The please-wait screen, with the hourglass, over everything else.
    Text1.setText(QStringLiteral("Loading Data Please wait..."));
    Text1.setVisible(true);
    loading_ = true;
    data.setCommandTimeout(0);
    s.setVisible(false);
    List2.setVisible(false);
    cmdOption.setVisible(false);
    TbrButton.setVisible(false);
    platform().setMousePointer(MousePointer::Hourglass);
    platform().processEvents();
    // A missing table ends the load at once, the please-wait screen left standing.
    if (UseTableCheck && dbHelper().TableExists(table_, dataConnection_, 0) != 1) {
      platform().messageBox(QString::fromUtf8("ไม่พบตารางข้อมูล ") + table_ +
                            QString::fromUtf8("   ในฐานข้อมูล โปรดติดต่อผู้ดูแลระบบ"));
      editStatus_ = false;
      return;
    }
    auto rs = std::make_unique<db::Recordset>();
    rs->Open(vb::Trim(QStringLiteral("SELECT * FROM ") + table_ + where_ + order_), data, 3, 1, -1);
    s.setRow(s.MaxRows());
    // The reset runs only while the grid has at most one row, as it always has.
    if (ClearFirst) {
      for (int32_t i = s.MaxRows(); i <= 1; ++i) Matrix1.ResetRow(i);
      FillINI();
    }
    s.setCol(1);
    RecordSetReady = true;
    rsid_ = std::move(rs);
    db::Recordset& r = *rsid_;
    db::Fields& fields = r.Fields();
    StandardHelper& h = helper();

    // The field behind each column, looked up by name when first needed and again only after a
    // header text of the surface has changed.
    constexpr int32_t unknown = -2;
    std::vector<int32_t> fieldOf;
    uint32_t fieldsEdits = 0;
    auto fieldFor = [&](int32_t col) {
      if (fieldsEdits != s.headerTextEdits() || size_t(col) >= fieldOf.size()) {
        fieldOf.assign(size_t(s.MaxCols()) + 1, unknown);
        fieldsEdits = s.headerTextEdits();
      }
      int32_t& fi = fieldOf[size_t(col)];
      if (fi == unknown) {
        fi = -1;
        const QString& name = attribute(attr::FieldName, col);
        for (int32_t i = 0; i < fields.Count(); ++i) {
          if (fields.Item(i).Name().compare(name, Qt::CaseInsensitive) == 0) {
            fi = i;
            break;
          }
        }
      }
      return fi;
    };

    bool first = true;
    while (!r.EOF_()) {
      // The first record goes into the last row; each further one into a new row.
      if (first) {
        s.SetText(attr::RecordState, 1, QString());
        s.setRowHeight(1, defaultRowHeight_);
        s.setRowHidden(false);
        FillINI();
        first = false;
      } else {
        cmdAppend_Click(false);
      }
      int32_t last = s.MaxRows();
      if (listener_) listener_->MoveComplete(last);
      s.SetText(attr::RecordState, s.Row(), QStringLiteral("E"));
      const int32_t row = s.MaxRows();
      // Each column that names a field takes that field's value, by its type.
      for (int32_t col = nextNamedColumn(0); col <= s.MaxCols(); col = nextNamedColumn(col)) {
        const ColumnFacts f = factsOf(col);
        const int32_t fi = fieldFor(col);
        if (fi < 0) continue;
        if (UseFieldCheck) {
          const QString name = attribute(attr::FieldName, col);
          if (dbHelper().FieldExists(name, table_, dataConnection_, 0) != 1) {
            platform().messageBox(QString::fromUtf8("ไม่พบฟิลด์ ") + name +
                                  QString::fromUtf8(" โปรดติดต่อผู้ดูแลระบบ"));
            return;
          }
        }
        // A number the table stores as one is read as one; anything else (NULL, a text, a key,
        // a label) as a variant.
        const FieldKind kind = f.kind;
        double stored = 0;
        const bool isNumber = !f.primaryKey && kind != FieldKind::Text && kind != FieldKind::LabelList &&
                              fields.Item(fi).numberValue(stored);
        const QVariant value = isNumber ? QVariant() : fields.Item(fi).Value();
        if (f.primaryKey) s.SetText(attr::StoredKey, row, value.isNull() ? QString() : textOf(value));
        if (!isNumber && value.isNull()) continue;
        auto number = [&] { return isNumber ? stored : vb::CDbl(value); };
        auto text = [&](const QString& t) { s.SetText(col, row, t); };
        switch (kind) {
          case FieldKind::Number:
          case FieldKind::AbsNumber: {
            double v = number();
            if (kind == FieldKind::AbsNumber) v = std::abs(v);
            Matrix1.SetValue(row, col, v);
            const bool zero = v == 0 && !showZeroValueText_;
            text(zero ? noText() : shown(Form::Number, v, decimalsOf(factsOf(col), col)));
            break;
          }
          case FieldKind::Hour: {
            const double v = number();
            Matrix1.SetValue(row, col, v);
            text(v == 0 && !showZeroValueText_ ? noText() : shown(Form::Hour, v));
            break;
          }
          case FieldKind::DayTime: {
            const double v = number();
            Matrix1.SetValue(row, col, v);
            text(shown(Form::DayTime, v));
            break;
          }
          case FieldKind::Year: {
            const double v = number();
            Matrix1.SetValue(row, col, v);
            text(shown(Form::Year, v));
            break;
          }
          case FieldKind::Text: text(textOf(value)); break;
          case FieldKind::YesNo: {
            const double v = number();
            Matrix1.SetValue(row, col, v);
            text(v == 1 ? QStringLiteral("Y") : QStringLiteral("N"));
            break;
          }
          case FieldKind::Period:
          case FieldKind::Date: {
            const double v = number();
            Matrix1.SetValue(row, col, v);
            text(v == 0 ? noText() : kind == FieldKind::Period ? shown(Form::Period, v) : shown(Form::Date, v, true));
            emptyDateTest(row, col);
            break;
          }
          case FieldKind::DateTime: {
            const double v = number();
            Matrix1.SetValue(row, col, v);
            text(v == 0 ? noText() : shown(Form::DateTime, v, true));
            break;
          }
          case FieldKind::Time: {
            const double v = number();
            Matrix1.SetValue(row, col, v);
            text(v == 0 && !showZeroValueText_ ? noText() : shown(Form::Time, v));
            break;
          }
          case FieldKind::Check: {
            const double v = number();
            Matrix1.SetValue(row, col, v);
            const int32_t keepCol = s.Col();
            showCheckCell(row, col, v);
            s.setCol(keepCol);
            break;
          }
          case FieldKind::LabelList: {
            int32_t position = std::abs(int32_t(h.TextToInteger(textOf(value))));
            if (position > 30000) position = 1;
            Matrix1.SetValue(row, col, position);
            if (!attribute(attr::Labels, col).isEmpty()) text(labelAt(col, position));
            break;
          }
          default: break;
        }
      }
      last = s.MaxRows();
      if (listener_) listener_->BeforeMoveNext(last);
      r.MoveNext();
    }
  } catch (const Error& e) {
    failure = e.number ? e.number : err::DbUnspecified;
  } catch (const std::exception&) {
    failure = err::InvalidProcedureCall;
  }
  // After the last record, or a failure: the grid comes back whatever happened.
  step([&] { s.SetActiveCell(1, 1); });
  step([&] {
    s.setVisible(AutoShow);
    cmdOption.setVisible(AutoShow);
    TbrButton.setVisible(AutoShow);
  });
  step([&] {
    if (!rsid_) throw Error{err::ObjectRequired, QStringLiteral("Object required")};
    RecordCount = rsid_->RecordCount();
  });
  RecordSetReady = false;
  numberRows();
  platform().setMousePointer(MousePointer::Default);
  Text1.setVisible(false);
  List2.setVisible(false);
  s.setVisible(true);
  ErrorNumber = failure;
  loading_ = false;
}

}  // namespace tq7
