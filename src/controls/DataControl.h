#pragma once
// A data control of a form: a named holder of a record set that tells its bound controls when
// its current record moves (its reposition event). The application moves the record set and
// calls Reposition, as the data control's own buttons would.
#include "companion/db/Recordset.h"

#include <QString>
#include <functional>
#include <vector>

namespace tq7 {

class DataControl {
 public:
  explicit DataControl(QString name) : name_(std::move(name)) {}
  DataControl(const DataControl&) = delete;
  DataControl& operator=(const DataControl&) = delete;

  const QString& Name() const { return name_; }
  // The record set on show; not owned, may be null.
  db::Recordset* Recordset() const { return recordset_; }
  void setRecordset(db::Recordset* rs) { recordset_ = rs; }

  // Raises the reposition event to every bound control, in the order they bound.
  void Reposition();
  // A bound control receives the event from now on; the answer identifies it for unbinding.
  int addRepositionHandler(std::function<void()> handler);
  void removeRepositionHandler(int id);

 private:
  QString name_;
  db::Recordset* recordset_ = nullptr;
  std::vector<std::pair<int, std::function<void()>>> handlers_;
  int nextId_ = 1;
};

}  // namespace tq7
