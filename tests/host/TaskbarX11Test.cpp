// The task bar on a real X server (Xvfb on a private display): the panels are dock windows; the
// control hides and shows them and holds the server's answer, and a plain window is left alone.
#include "host/X11TaskbarWindows.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QThread>
#include <cstring>
#include <gtest/gtest.h>

#if __has_include(<xcb/xcb.h>)
#include <xcb/xcb.h>
#define TQ7_TEST_XCB 1
#endif

using namespace tq7;

TEST(TaskbarX11Test, WithoutADisplayNothingIsFoundAndNothingHappens) {
  X11TaskbarWindows none(QStringLiteral(":4999"));
  EXPECT_FALSE(none.connected());
  EXPECT_EQ(none.FindWindow(QStringLiteral("Shell_traywnd"), QString()), 0);
  EXPECT_EQ(none.ShowWindow(0, 0), 0);
  Taskbar::setWindows(&none);
  Taskbar t;
  t.setShow(false);
  EXPECT_FALSE(t.Show());
  Taskbar::setWindows(nullptr);
}

#ifdef TQ7_TEST_XCB
namespace {
uint32_t internAtom(xcb_connection_t* c, const char* name) {
  xcb_intern_atom_reply_t* r = xcb_intern_atom_reply(c, xcb_intern_atom(c, 0, uint16_t(std::strlen(name)), name), nullptr);
  const uint32_t a = r ? r->atom : 0;
  free(r);
  return a;
}
bool viewable(xcb_connection_t* c, uint32_t w) {
  xcb_get_window_attributes_reply_t* r = xcb_get_window_attributes_reply(c, xcb_get_window_attributes(c, w), nullptr);
  const bool v = r && r->map_state == XCB_MAP_STATE_VIEWABLE;
  free(r);
  return v;
}
}  // namespace

TEST(TaskbarX11Test, HidesAndShowsTheDockWindowsOfARealServer) {
  const QString xvfb = QStandardPaths::findExecutable(QStringLiteral("Xvfb"));
  if (xvfb.isEmpty()) GTEST_SKIP() << "Xvfb is not installed (scripts/setup installs it)";
  // A display number of our own, free of any other server.
  int n = 90 + int(QCoreApplication::applicationPid() % 400);
  while (QFileInfo::exists(QStringLiteral("/tmp/.X11-unix/X%1").arg(n))) ++n;
  const QString display = QStringLiteral(":%1").arg(n);
  QProcess server;
  server.start(xvfb, {display, QStringLiteral("-nolisten"), QStringLiteral("tcp"), QStringLiteral("-screen"),
                      QStringLiteral("0"), QStringLiteral("640x480x24")});
  ASSERT_TRUE(server.waitForStarted(5000));
  xcb_connection_t* c = nullptr;
  for (int i = 0; i < 100; ++i) {
    c = xcb_connect(display.toLocal8Bit().constData(), nullptr);
    if (!xcb_connection_has_error(c)) break;
    xcb_disconnect(c);
    c = nullptr;
    QThread::msleep(50);
  }
  ASSERT_NE(c, nullptr) << "the X server did not come up";
  const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(c)).data;
  auto window = [&](bool dock) {
    const uint32_t w = xcb_generate_id(c);
    xcb_create_window(c, XCB_COPY_FROM_PARENT, w, screen->root, 0, dock ? 450 : 0, 640, 30, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0, nullptr);
    if (dock) {
      const uint32_t type = internAtom(c, "_NET_WM_WINDOW_TYPE_DOCK");
      xcb_change_property(c, XCB_PROP_MODE_REPLACE, w, internAtom(c, "_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, 32, 1,
                          &type);
    }
    xcb_map_window(c, w);
    return w;
  };
  const uint32_t panel = window(true), plain = window(false);
  xcb_flush(c);
  free(xcb_get_input_focus_reply(c, xcb_get_input_focus(c), nullptr));
  ASSERT_TRUE(viewable(c, panel));

  {
    X11TaskbarWindows x(display);
    ASSERT_TRUE(x.connected());
    EXPECT_EQ(x.FindWindow(QStringLiteral("Shell_traywnd"), QString()), int64_t(panel));
    Taskbar::setWindows(&x);
    Taskbar t;
    t.setShow(false);
    EXPECT_FALSE(viewable(c, panel));
    EXPECT_TRUE(viewable(c, plain));
    EXPECT_TRUE(t.Show());  // the server said the panel was visible before
    t.setShow(false);
    EXPECT_FALSE(t.Show());
    t.setShow(true);
    EXPECT_TRUE(viewable(c, panel));
    EXPECT_FALSE(t.Show());  // shown now, but it was hidden before: the property holds that
    Taskbar::setWindows(nullptr);
  }
  xcb_disconnect(c);
  server.terminate();
  server.waitForFinished(5000);
}
#endif
