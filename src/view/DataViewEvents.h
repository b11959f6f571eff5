#pragma once
// The events of DataView, in their order. Arguments by reference are read back after the call.
#include <cstdint>

namespace tq7 {

class Matrix;

class DataViewEvents {
 public:
  virtual ~DataViewEvents() = default;
  // The command bar.
  virtual void AddCommandClick() {}
  virtual void EditCommandClick() {}
  virtual void DeleteCommandClick() {}
  virtual void SelectCommandClick() {}
  virtual void OpenCommandClick() {}
  virtual void CancelCommandClick() {}
  virtual void PrintCommandClick() {}
  virtual void ExportCommandClick() {}
  // Declared for the applications that name them; the view never raises these three.
  virtual void KeyDown(int16_t& KeyCode, int16_t& Shift) { (void)KeyCode, (void)Shift; }
  virtual void ModifyCommandClick() {}
  virtual void HelpCommandClick() {}
  // The query and the fill.
  virtual void RecordCountChange() {}
  virtual void BeforeFillRecord(int32_t Row) { (void)Row; }
  virtual void AfterFillRecord(int32_t Row) { (void)Row; }
  virtual void ActionReady() {}
  virtual void SetPageSize(int32_t iPageSize) { (void)iPageSize; }
  // The selection.
  virtual void SelectionChange(Matrix& MatrixData) { (void)MatrixData; }
  virtual void SelectAll(Matrix& MatrixData) { (void)MatrixData; }
  virtual void DeSelectAll(Matrix& MatrixData) { (void)MatrixData; }
  virtual void SelChange() {}
  virtual void Click() {}
  virtual void RowDeleted(int32_t Row) { (void)Row; }
};

}  // namespace tq7
