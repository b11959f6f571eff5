// GridEditor: the record commands of the tool bar and the function keys.
#include "grid/editor/GridEditor.h"

namespace tq7 {

void GridEditor::cmdDelete_Click() {}

}  // namespace tq7
