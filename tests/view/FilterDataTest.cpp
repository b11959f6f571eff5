// The filter dialog: its lists and operators, the value check, the condition of each type, its
// keys; and whatever a user types, the view runs either no statement or one with exactly one
// condition that the server parses.
#include "companion/VbText.h"
#include "frame/FakePlatform.h"
#include "view/FilterData.h"
#include "view/ViewTestSupport.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

using namespace tq7;
using namespace tq7::test;

namespace {

struct Dialog {
  FilterData f;
  Dialog() {
    f.setLists("ItemName,Qty,Price,DocDate,Flag,State,Other", "Name,Qty,Price,Date,Flag,State;Open;Closed,Other",
               "0,2,1,6,4,13,99");
    f.Form_Load();
    f.Show();
    f.Form_Activate();
  }
  // Chooses a field and an operator, types the text and presses the search button.
  QString search(int field, const QString& op, const QString& text) {
    f.lstFields.setListIndex(field);
    if (!op.isEmpty()) f.lstOperator.setListIndex(int(f.lstOperator.Items().indexOf(op)));
    f.txtValue.setText(text);
    f.cmdSearch_Click();
    return f.txtResult.Text();
  }
};

}  // namespace

TEST(FilterData, OperatorsAndTheValueCheckFollowTheFieldType) {
  Dialog d;
  FilterData& f = d.f;
  EXPECT_EQ(f.lstFields.ListIndex(), 0);
  EXPECT_EQ(f.lstOperator.Items(), (QStringList{"LIKE", "CONTAIN", "=", "<>"}));
  EXPECT_EQ(f.lstOperator.List(f.lstOperator.ListIndex()), "CONTAIN");
  EXPECT_TRUE(f.cmdSearch.Enabled());  // the form's coming up enables it, after the check
  f.lstFields.setListIndex(2);
  EXPECT_EQ(f.lstOperator.Items(), (QStringList{"=", "<>", ">", ">=", "<", "<="}));
  f.lstFields.setListIndex(4);
  EXPECT_EQ(f.lstOperator.Items(), (QStringList{"=", "<>"}));
  f.lstFields.setListIndex(6);  // any other type: the list stays as it is
  EXPECT_EQ(f.lstOperator.Items(), (QStringList{"=", "<>"}));

  f.lstFields.setListIndex(2);
  f.txtValue.setText("abc");
  EXPECT_EQ(f.lblError.Caption(), "Not correct input data type, Please type numeric");
  EXPECT_FALSE(f.cmdSearch.Enabled());
  int16_t enter = key::Return, none = 0;
  f.txtValue_KeyDown(enter, none);  // Enter does nothing while the button is off
  EXPECT_TRUE(f.Visible());
  EXPECT_EQ(f.txtResult.Text(), "");
  f.txtValue.setText("1.5");
  EXPECT_EQ(f.lblError.Caption(), "");
  EXPECT_TRUE(f.cmdSearch.Enabled());
  f.lstFields.setListIndex(1);
  EXPECT_EQ(f.lblError.Caption(), "Invalid input decimal");
  EXPECT_FALSE(f.cmdSearch.Enabled());
  f.lstFields.setListIndex(3);
  f.txtValue.setText("31/02/2567");
  EXPECT_EQ(f.lblError.Caption(), "");
  EXPECT_FALSE(f.cmdSearch.Enabled());
  f.txtValue.setText("15/03/2567");
  EXPECT_TRUE(f.cmdSearch.Enabled());
  f.txtValue.setText("   ");
  EXPECT_FALSE(f.cmdSearch.Enabled());
}

TEST(FilterData, ConditionTextOfEachType) {
  {
    Dialog d;
    EXPECT_EQ(d.search(0, "CONTAIN", "O'Brien"), "ItemName LIKE '%OBrien%'");
    EXPECT_EQ(d.f.txtValue.Text(), "OBrien");  // the box shows the cleaned text
    EXPECT_FALSE(d.f.Visible());
  }
  EXPECT_EQ(Dialog().search(0, "CONTAIN", "%abc"), "ItemName LIKE '%abc%'");
  EXPECT_EQ(Dialog().search(0, "LIKE", "ab#$c"), "ItemName LIKE 'abc%'");
  EXPECT_EQ(Dialog().search(0, "=", QString::fromUtf8("ข้าว")), QString::fromUtf8("ItemName = 'ข้าว'"));
  EXPECT_EQ(Dialog().search(1, ">=", "5"), "Qty >= 5");
  EXPECT_EQ(Dialog().search(2, "<", "1,234.5"), "Price < 1234.5");
  EXPECT_EQ(Dialog().search(2, "=", "0"), "Price = 0");
  EXPECT_EQ(Dialog().search(3, "=", "15/03/2567"), "DocDate = #$2024-03-15#$");
  EXPECT_EQ(Dialog().search(4, "=", "yes"), "Flag = 1");
  EXPECT_EQ(Dialog().search(4, "=", "No"), "Flag = 0");
  EXPECT_EQ(Dialog().search(4, "<>", "r"), "Flag <> 2");
  EXPECT_EQ(Dialog().search(4, "=", "x"), "Flag = ");  // the value is empty, as it always was
  EXPECT_EQ(Dialog().search(5, "=", "Closed"), "State = 1");
  EXPECT_EQ(Dialog().search(5, "=", "Clo"), "State = 1");
  EXPECT_EQ(Dialog().search(5, "=", "Open"), "State = 0");
  EXPECT_EQ(Dialog().search(5, "=", "x"), "State = -1");
  // A date that is none, reaching the search when the check was passed over: the bare text.
  EXPECT_EQ(Dialog().search(3, "=", "no date"), "no date");
  {
    // An empty date builds nothing: the dialog stays open and says so.
    Dialog d;
    EXPECT_EQ(d.search(3, "=", ""), "");
    EXPECT_TRUE(d.f.Visible());
    EXPECT_EQ(d.f.lblError.Caption(), "Please type something in Value box");
  }
}

TEST(FilterData, KeysOfTheValueBox) {
  int16_t none = 0;
  {
    Dialog d;
    int16_t esc = key::Escape;
    d.f.txtValue_KeyDown(esc, none);
    EXPECT_FALSE(d.f.Visible());
    EXPECT_EQ(d.f.txtResult.Text(), "");
  }
  {
    Dialog d;
    int16_t f6 = key::F6;
    d.f.txtValue_KeyDown(f6, none);
    EXPECT_EQ(d.f.txtResult.Text(), "RESET");
  }
  {
    Dialog d;  // in search mode the reset button is hidden and F6 does nothing
    d.f.cmdReset.setVisible(false);
    int16_t f6 = key::F6;
    d.f.txtValue_KeyDown(f6, none);
    EXPECT_TRUE(d.f.Visible());
  }
  {
    // The default field is reduced to the last one; an empty list disables the buttons.
    FilterData f;
    f.DefaultIndex = 9;
    f.setLists("a,b", "A,B", "0,0");
    f.Form_Activate();
    EXPECT_EQ(f.lstFields.ListIndex(), 1);
    FilterData empty;
    empty.Form_Activate();
    EXPECT_FALSE(empty.cmdSearch.Enabled());
    EXPECT_FALSE(empty.cmdReset.Enabled());
  }
}

// Whatever a user types, through the dialog's own keys: no statement, or one whose condition the
// server parses and that holds exactly one condition.
TEST(FilterData, HostileValuesGiveNoConditionOrOneTheServerParses) {
  FakePlatform fake;
  ItemsFile db(40);
  ItemsView v;
  v.view.showData("c", "ItemID", "ItemID,ItemName,Price,DocDate,Status,Kind,Flag,Code,Price",
                  "No,Name,Price,Date,Status,Kind;Zero;One;Two,Flag,Code,Amount", "1,1,1,1,1,1,1,1,1",
                  "2,0,1,6,4,13,3,99,5", "Items", db.conn(), 1, 1, 1, 1, 1);
  ASSERT_EQ(v.view.ErrorNumber, 0);
  const QStringList values = {"O'Brien", "100%", "#$x#$", "a--b", "1;DROP TABLE Items", QString::fromUtf8("ข้าวหอม"),
                              "abc", "31/02/2567", "15/03/2567", "12.5", "-3", "1e3", "' OR 1=1 --", "Y", "Two",
                              "\\", "0x10", "  7  "};
  sqlite3* raw = nullptr;
  ASSERT_EQ(sqlite3_open(db.path.toUtf8().constData(), &raw), SQLITE_OK);
  int statements = 0;
  for (int field = 0; field < 9; ++field) {
    for (const QString& text : values) {
      fake.onShowModal = [&](Form& form) {
        auto& f = static_cast<FilterData&>(form);
        f.lstFields.setListIndex(field);
        f.txtValue.setText(text);
        int16_t enter = key::Return, esc = key::Escape, none = 0;
        f.txtValue_KeyDown(enter, none);
        if (f.Visible()) f.txtValue_KeyDown(esc, none);
      };
      const QString before = v.view.SelectText();
      v.view.mfgData.SetActiveCell(1, 1);
      v.view.FilterTool();
      if (v.view.SelectText() == before) continue;  // no condition: nothing ran
      ++statements;
      const QString sent = vb::Replace(v.view.SelectText(), "#$", "'");
      EXPECT_EQ(sent.count(" WHERE "), 1) << sent.toStdString();
      sqlite3_stmt* st = nullptr;
      const int rc = sqlite3_prepare_v2(raw, sent.toUtf8().constData(), -1, &st, nullptr);
      sqlite3_finalize(st);
      if (field == 4) {
        // A status field takes only numbers, and a number's first letter names no state: the
        // condition ends in an empty value, which the server refuses and the view reports.
        EXPECT_NE(rc, SQLITE_OK);
        EXPECT_NE(v.view.ErrorNumber, 0);
        EXPECT_TRUE(v.view.Text1.Text().startsWith("Query : "));
      } else {
        EXPECT_EQ(rc, SQLITE_OK) << sent.toStdString();
        EXPECT_EQ(v.view.ErrorNumber, 0) << sent.toStdString();
      }
    }
  }
  sqlite3_close(raw);
  EXPECT_GT(statements, 40);
  // The date reaches the server in quotes and finds its row; the statement keeps "#$".
  fake.onShowModal = [](Form& form) {
    auto& f = static_cast<FilterData&>(form);
    f.lstFields.setListIndex(3);
    f.txtValue.setText("15/01/2567");
    int16_t enter = key::Return, none = 0;
    f.txtValue_KeyDown(enter, none);
  };
  v.view.FilterTool();
  EXPECT_TRUE(v.view.SelectText().endsWith("WHERE DocDate = #$2024-01-15#$"));
  EXPECT_EQ(v.view.RecordCount, 1);
  EXPECT_EQ(v.view.TextMatrix(1, 1), "15");
}
