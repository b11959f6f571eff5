// The host tests need a QApplication; the widgets run under Qt's offscreen platform.
#include <QApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleTest(&argc, argv);
  QApplication app(argc, argv);
  QApplication::setApplicationName(QStringLiteral("TQ7 Host Tests"));
  QApplication::setApplicationDisplayName(QStringLiteral("TQ7 Host Tests"));
  return RUN_ALL_TESTS();
}
