#pragma once
// The events of GridEditor, in their order. Arguments by reference are read back after the call.
#include <cstdint>

namespace tq7 {

class GridEditorEvents {
 public:
  virtual ~GridEditorEvents() = default;
  virtual void KeyDown(int16_t& KeyCode, int16_t& Shift) { (void)KeyCode, (void)Shift; }
  virtual void GridDataChange() {}
  virtual void SelChange() {}
  virtual void ValidData() {}
  virtual void AddClick() {}
  virtual void DeleteClick() {}
  virtual void BeforeAddClickProcess() {}
  virtual void BeforeDeleteClickProcess() {}
  virtual void BeforeMoveNext(int32_t& Row) { (void)Row; }
  virtual void MoveComplete(int32_t& Row) { (void)Row; }
  virtual void AfterDeleteKeyProcess() {}
  virtual void DeleteKeyProcessOnReadOnly() {}
  virtual void DoubleClick() {}
  virtual void LeaveCell(int32_t COL, int32_t Row, int32_t NewCol, int32_t NewRow, bool& Cancel) {
    (void)COL, (void)Row, (void)NewCol, (void)NewRow, (void)Cancel;
  }
  virtual void Click(int32_t COL, int32_t Row) { (void)COL, (void)Row; }
};

}  // namespace tq7
