#include "frame/FakePlatform.h"
#include "grid/editor/GridEditor.h"

#include <gtest/gtest.h>

using namespace tq7;

namespace {

struct Events : GridEditorEvents {
  QStringList log;
  void SelChange() override { log << QStringLiteral("SelChange"); }
  void Click(int32_t c, int32_t r) override { log << QStringLiteral("Click %1,%2").arg(c).arg(r); }
  void GridDataChange() override { log << QStringLiteral("GridDataChange"); }
  void LeaveCell(int32_t c, int32_t r, int32_t nc, int32_t nr, bool& cancel) override {
    log << QStringLiteral("LeaveCell %1,%2>%3,%4").arg(c).arg(r).arg(nc).arg(nr);
    cancel = refuse;
  }
  bool refuse = false;
};

bool buttonShown(GridEditor& g, const char* key) { return g.TbrButton.Buttons(QString::fromUtf8(key)).Visible; }

}  // namespace

TEST(GridEditorFrame, CreationLeavesTheDocumentedState) {
  FakePlatform fake;
  GridEditor g;
  EXPECT_EQ(g.ErrorNumber, 0);
  EXPECT_EQ(g.RUNMODE, "");
  EXPECT_FALSE(g.RecordSetReady);
  EXPECT_FALSE(g.DOINGCLIP);
  EXPECT_EQ(g.TipWidth(), 5000);
  EXPECT_EQ(g.TipHeight(), 5000);
  EXPECT_TRUE(g.EnableNumber());
  EXPECT_TRUE(g.EditStatusShowAddButton());
  EXPECT_FALSE(g.EditStatusShowRemoveButton());
  EXPECT_TRUE(g.DoubleClickNoAction());
  EXPECT_EQ(g.DoubleClickEventKeyCode(), 113);
  EXPECT_EQ(g.LanguageID(), 0);
  EXPECT_EQ(g.GETGridTYpe(), 1);
  EXPECT_EQ(g.FixedCols(), 1);
  EXPECT_EQ(g.hwnd(), g.mfgData.hWnd());
  EXPECT_EQ(&g.GETGridValueObject(), &g.Matrix1);
  EXPECT_EQ(g.GETRecordset(), nullptr);
  EXPECT_EQ(g.mfgData.ToolTipText(), QString::fromUtf8("กดปุ่ม F1 เพื่อดูวิธีใช้ทั้งหมด"));
  // The surface: no rows, only the caption row and column 0 of the header area show.
  EXPECT_EQ(g.mfgData.MaxRows(), 0);
  EXPECT_EQ(g.mfgData.shownHeaderRows(), std::vector<int32_t>{-997});
  EXPECT_EQ(g.mfgData.shownHeaderCols(), std::vector<int32_t>{0});
  g.mfgData.setRow(-1);
  g.mfgData.setCol(-1);
  EXPECT_TRUE(g.mfgData.Lock());
  EXPECT_EQ(g.mfgData.TypeVAlign(), 2);
  EXPECT_FALSE(g.List2.Visible());
  // The tool bar carries every key with its caption and image, none shown yet.
  ASSERT_EQ(g.TbrButton.ButtonList().size(), 17u);
  EXPECT_EQ(g.TbrButton.Buttons("Enter").Caption, "Enter-OK      ");
  EXPECT_EQ(g.TbrButton.Buttons("MoveFirst").Caption, "Sh+F11-First\t");
  EXPECT_EQ(g.TbrButton.Buttons("DeleteList").Image, "Remove");
  EXPECT_EQ(g.TbrButton.Buttons("Freeze").Image, "Lock");
  for (const ToolButton& b : g.TbrButton.ButtonList()) EXPECT_FALSE(b.Visible) << b.Key.toStdString();
  EXPECT_EQ(GridEditor::ToolBarImages().first(), "Help");
}

TEST(GridEditorFrame, PersistedPropertiesRestoreWithTheirReadingDefaultsAndSaveInOrder) {
  FakePlatform fake;
  GridEditor saved;
  saved.setNote(QString::fromUtf8("บันทึก"));
  saved.setEditStatus(true);
  PropertyBag bag;
  saved.WriteProperties(bag);
  EXPECT_EQ(bag.names(),
            (QStringList{"Note", "EditStatus", "EditStatusShowAddButton", "EditStatusShowRemoveButton"}));

  GridEditor restored;
  restored.ReadProperties(PropertyBag::fromJson(bag.toJson()));
  EXPECT_TRUE(restored.EditStatus());
  EXPECT_EQ(restored.RUNMODE, "");  // restoring sets the member, not the mode
  EXPECT_EQ(restored.Note(), QString::fromUtf8("บันทึก"));
  restored.setbuttons();
  EXPECT_EQ(restored.RUNMODE, "EDIT");

  // Saved without the remove flag: restoring gives its reading default, True.
  GridEditor fromEmpty;
  fromEmpty.ReadProperties(PropertyBag{});
  EXPECT_TRUE(fromEmpty.EditStatusShowRemoveButton());
  EXPECT_FALSE(fromEmpty.EditStatus());
}

TEST(GridEditorFrame, ResizeKeepsAFloorLaysOutTheBarAndTheOptionButton) {
  FakePlatform fake;
  GridEditor g;
  g.setSize(6000, 100);
  EXPECT_EQ(g.Height(), 330);
  // With the add button flag the bar shows and the surface gets the rest of the height.
  EXPECT_TRUE(g.TbrButton.Visible());
  EXPECT_EQ(g.mfgData.Height(), std::abs(330 - g.TbrButton.Height()));
  g.setSize(6000, 4000);
  EXPECT_EQ(g.mfgData.Height(), 4000 - g.TbrButton.Height());
  EXPECT_EQ(g.mfgData.Width(), 6000);
  EXPECT_EQ(g.Text1.Width(), 6000);
  EXPECT_EQ(g.cmdLegend.Left(), 6000 - g.cmdLegend.Width());
  EXPECT_EQ(g.cmdLegend.Top(), g.mfgData.Height());
  // Without any of the five flags the bar hides and the surface takes the whole height; the two
  // move buttons take no part.
  g.setEditStatusShowMoveUpButton(true);
  g.setEditStatusShowAddButton(false);
  EXPECT_FALSE(g.TbrButton.Visible());
  EXPECT_EQ(g.mfgData.Height(), 4000);
  // The option button is never narrower than 300, even with a number column of width 0.
  g.setNumberWidth(0);
  g.ReSizeNow();
  EXPECT_EQ(g.cmdOption.Width(), 300);
  g.setNumberWidth(450);
  EXPECT_EQ(g.cmdOption.Width(), 450);
  EXPECT_EQ(g.mfgData.ColWidth(0), 450);
  g.setNumberWidth(-5);  // a negative width changes nothing
  EXPECT_EQ(g.NumberWidth(), 450);
  // ABSLeft is only kept.
  g.setABSLeft(1234);
  EXPECT_EQ(g.ABSLeft(), 1234);
  EXPECT_EQ(g.mfgData.Left(), 0);
}

TEST(GridEditorFrame, SetbuttonsFollowsTheFlagsInEachMode) {
  FakePlatform fake;
  GridEditor g;
  g.SetFirst(3);
  g.setEditStatusShowMoveUpButton(true);
  g.setEditStatusShowAddButton(false);
  g.setEditStatus(true);
  EXPECT_EQ(g.RUNMODE, "EDIT");
  EXPECT_TRUE(buttonShown(g, "MoveUp"));
  EXPECT_TRUE(buttonShown(g, "Freeze"));
  EXPECT_FALSE(buttonShown(g, "NewList"));
  EXPECT_FALSE(g.TbrButton.Visible());  // a move button alone does not show the bar
  g.setEditStatusShowClearButton(true);  // the bar has no such button, but the flag counts
  EXPECT_TRUE(g.TbrButton.Visible());
  g.setShowEnterButton(true);
  EXPECT_FALSE(buttonShown(g, "Enter"));  // Enter belongs to view mode
  g.setEditStatus(false);
  EXPECT_EQ(g.RUNMODE, "VIEW");
  EXPECT_TRUE(buttonShown(g, "Enter"));
  EXPECT_FALSE(buttonShown(g, "MoveUp"));
  EXPECT_FALSE(buttonShown(g, "Freeze"));
  // Every column stays locked for the surface's own editing, in both modes.
  g.mfgData.setRow(1);
  for (int32_t c = 1; c <= 3; ++c) {
    g.mfgData.setCol(c);
    EXPECT_TRUE(g.mfgData.Lock());
  }
}

TEST(GridEditorFrame, PleaseWaitScreenAndFocus) {
  FakePlatform fake;
  GridEditor g;
  g.setNote(QStringLiteral("before"));
  const int pumps = fake.processEventsCount;
  g.SpeedProcess2(true, QString());
  EXPECT_EQ(g.Text1.Text(), "Processing Please wait...");
  EXPECT_TRUE(g.Text1.Visible());
  EXPECT_FALSE(g.mfgData.Visible());
  EXPECT_FALSE(g.cmdOption.Visible());
  EXPECT_EQ(g.SpeedProcess2(false, QStringLiteral("ignored")), 0);
  EXPECT_EQ(g.Text1.Text(), "Processing Please wait...");  // the text stays, the caption is ignored
  EXPECT_FALSE(g.Text1.Visible());
  EXPECT_TRUE(g.mfgData.Visible());
  g.SpeedProcess2(true, QStringLiteral("Sorting Please wait..."));
  EXPECT_EQ(g.Note(), "Sorting Please wait...");
  EXPECT_EQ(fake.processEventsCount, pumps + 3);

  // The control's focus goes to the surface, which hides the overlays.
  g.SpeedProcess(false);
  g.Text.setVisible(true);
  g.List1.setVisible(true);
  g.controlGotFocus();
  EXPECT_EQ(g.focusedChild(), &g.mfgData);
  EXPECT_FALSE(g.Text.Visible());
  EXPECT_FALSE(g.List1.Visible());
  g.Text.setVisible(true);
  EXPECT_EQ(g.SetParentForm(nullptr, true), 0);
  EXPECT_FALSE(g.Text.Visible());

  g.iSendKeys(QStringLiteral("{F2}"), true);
  EXPECT_EQ(fake.calls.last(), "sendKeys: {F2} | wait");
}

TEST(GridEditorFrame, ClickTurnsCheckCellsOverUnlessInViewThenSelChangeAndClick) {
  FakePlatform fake;
  GridEditor g;
  Events ev;
  g.setListener(&ev);
  g.SetFirst(2);
  g.addField3(1, QStringLiteral("Done"), QStringLiteral("CHECK"), 0, QStringLiteral("OK"), 0, {}, 0, {}, 0, 1, 1, 1,
              1, 0, 600);
  g.addField3(2, QStringLiteral("Name"), QStringLiteral("TEXT"), 0, QStringLiteral("Name"), 0, {}, 0, {}, 0, 20, 1,
              1, 1, 0, 1500);
  g.mfgData.Move(0, 0, 3000, 2000);
  g.mfgData.setVisible(true);
  ev.log.clear();
  // Before setbuttons the mode is empty, which is not VIEW: the cell turns over.
  g.RUNMODE.clear();
  double x, y, w, h;
  ASSERT_TRUE(g.mfgData.GetCellPos(1, 1, x, y, w, h));
  g.mfgData.inputMouseDown(MouseButton::Left, 0, x + w / 2, y + h / 2);
  EXPECT_EQ(g.Matrix1.GetValue(1, 1), 1);
  EXPECT_EQ(ev.log.mid(ev.log.size() - 2), (QStringList{"SelChange", "Click 1,1"}));
  g.setEditStatus(false);
  g.mfgData.inputMouseDown(MouseButton::Left, 0, x + w / 2, y + h / 2);
  EXPECT_EQ(g.Matrix1.GetValue(1, 1), 1);
  // LeaveCell reaches the application, which can refuse the move.
  ev.refuse = true;
  ASSERT_TRUE(g.mfgData.GetCellPos(2, 1, x, y, w, h));
  g.mfgData.inputMouseDown(MouseButton::Left, 0, x + w / 2, y + h / 2);
  EXPECT_EQ(g.Column(), 1);
  EXPECT_TRUE(ev.log.contains("LeaveCell 1,1>2,1"));
}

TEST(GridEditorFrame, DraggedSizesOfZeroHideTheLineAndPutThePointerBack) {
  FakePlatform fake;
  GridEditor g;
  g.SetFirst(3);
  g.mfgData.Move(0, 0, 5000, 2000);
  g.mfgData.setVisible(true);
  g.mfgData.setRow(7);
  g.mfgData.setCol(2);
  double x, y, w, h;
  ASSERT_TRUE(g.mfgData.GetCellPos(1, -997, x, y, w, h));
  g.mfgData.inputMouseDown(MouseButton::Left, 0, x + w, y + h / 2);
  g.mfgData.inputMouseMove(x, y + h / 2, true);
  g.mfgData.inputMouseUp(MouseButton::Left, x, y + h / 2);
  EXPECT_TRUE(g.IsColHidden(1));
  EXPECT_EQ(g.mfgData.Row(), 7);
  EXPECT_EQ(g.mfgData.Col(), 2);
}
