#pragma once
// The colour legend of a grid: up to seven colour boxes, each with its description, and a Close
// button. The caller fills LegendText ("<colour>;<description>" entries joined by ","), loads the
// form and shows it modally; Close unloads it, so each showing starts from a fresh form.
#include "frame/Widget.h"

#include <QString>
#include <array>
#include <memory>

namespace tq7 {

class frmLegend : public Form {
 public:
  static constexpr int Entries = 7;

  frmLegend();

  // Filled by the caller before the form is loaded.
  QString LegendText;

  Label Frame1{QStringLiteral("Frame1")};  // the frame's caption above the boxes
  PictureBox& Picture1(int index) { return *pictures_.at(size_t(index)); }
  Label& Label1(int index) { return *labels_.at(size_t(index)); }
  const PictureBox& Picture1(int index) const { return *pictures_.at(size_t(index)); }
  const Label& Label1(int index) const { return *labels_.at(size_t(index)); }
  Button Command1{QStringLiteral("Command1")};

  // Fills the boxes and labels from LegendText; an empty text leaves them all hidden.
  void Form_Load();
  void Command1_Click();

 private:
  std::array<std::unique_ptr<PictureBox>, Entries> pictures_;
  std::array<std::unique_ptr<Label>, Entries> labels_;
};

}  // namespace tq7
