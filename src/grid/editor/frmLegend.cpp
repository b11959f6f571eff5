#include "grid/editor/frmLegend.h"

#include "companion/VbText.h"
#include "frame/Error.h"

namespace tq7 {

namespace {
// Layout in twips: a row per entry, the colour box on the left and its description beside it.
constexpr double kFormWidth = 4680, kFormHeight = 3930;
constexpr double kMargin = 120;
constexpr double kFrameTop = 120, kFrameHeight = 255;
constexpr double kFirstRowTop = 480, kRowPitch = 360;
constexpr double kBoxLeft = 240, kBoxWidth = 615, kBoxHeight = 270;
constexpr double kLabelLeft = 975, kLabelHeight = 270;
constexpr double kButtonWidth = 1215, kButtonHeight = 375;
}  // namespace

frmLegend::frmLegend() : Form(QStringLiteral("frmLegend")) {
  setCaption(QStringLiteral("Color Legend"));
  Move(0, 0, kFormWidth, kFormHeight);
  Hide();  // until the platform shows it

  Frame1.setCaption(QStringLiteral("   Color - Description"));
  Frame1.Move(kMargin, kFrameTop, kFormWidth - 2 * kMargin, kFrameHeight);
  addChild(Frame1);

  for (int i = 0; i < Entries; ++i) {
    const double top = kFirstRowTop + i * kRowPitch;
    pictures_[size_t(i)] = std::make_unique<PictureBox>(QStringLiteral("Picture1(%1)").arg(i));
    PictureBox& box = *pictures_[size_t(i)];
    box.Move(kBoxLeft, top, kBoxWidth, kBoxHeight);
    box.setVisible(false);  // shown only for the entries the legend has
    addChild(box);

    labels_[size_t(i)] = std::make_unique<Label>(QStringLiteral("Label1(%1)").arg(i));
    Label& label = *labels_[size_t(i)];
    label.Move(kLabelLeft, top, kFormWidth - kLabelLeft - kMargin, kLabelHeight);
    label.setVisible(false);
    addChild(label);
  }

  Command1.setCaption(QStringLiteral("Close"));
  Command1.Move((kFormWidth - kButtonWidth) / 2, kFirstRowTop + Entries * kRowPitch + kMargin, kButtonWidth,
                kButtonHeight);
  Command1.onClick = [this] { Command1_Click(); };
  addChild(Command1);
}

void frmLegend::Form_Load() {
  if (LegendText.isEmpty()) return;
  const QStringList entries = vb::Split(LegendText, QStringLiteral(","));
  for (int i = 0; i < Entries && i < int(entries.size()); ++i) {
    const QStringList parts = vb::Split(entries[i], QStringLiteral(";"));
    auto part = [&parts](int n) -> const QString& {
      if (n >= int(parts.size())) throw Error{err::SubscriptOutOfRange, QStringLiteral("Subscript out of range")};
      return parts[n];
    };
    // Each line stands alone: a colour that does not read leaves the box as it was, still shown.
    step([&] { Picture1(i).setBackColor(Colour(uint32_t(vb::CLng(part(0))))); });
    step([&] { Picture1(i).setVisible(true); });
    step([&] { Label1(i).setCaption(part(1)); });
    step([&] { Label1(i).setVisible(true); });
  }
}

void frmLegend::Command1_Click() { Hide(); }

}  // namespace tq7
