#include "host/X11TaskbarWindows.h"

#ifdef TQ7_HAVE_XCB
#include <xcb/xcb.h>
#endif

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace tq7 {

#ifdef TQ7_HAVE_XCB

namespace {
template <class T>
struct Reply {
  T* p = nullptr;
  ~Reply() { std::free(p); }
  T* operator->() const { return p; }
  explicit operator bool() const { return p != nullptr; }
};
}  // namespace

X11TaskbarWindows::X11TaskbarWindows(const QString& display) {
  int screen = 0;
  const QByteArray name = display.toLocal8Bit();
  xcb_connection_t* c = xcb_connect(display.isEmpty() ? nullptr : name.constData(), &screen);
  if (!c || xcb_connection_has_error(c)) {
    if (c) xcb_disconnect(c);
    return;
  }
  xcb_screen_iterator_t it = xcb_setup_roots_iterator(xcb_get_setup(c));
  for (int i = 0; i < screen && it.rem; ++i) xcb_screen_next(&it);
  if (!it.rem) {
    xcb_disconnect(c);
    return;
  }
  c_ = c;
  root_ = it.data->root;
}

X11TaskbarWindows::~X11TaskbarWindows() {
  if (c_) xcb_disconnect(c_);
}

uint32_t X11TaskbarWindows::atom(const char* name) {
  Reply<xcb_intern_atom_reply_t> r{xcb_intern_atom_reply(c_, xcb_intern_atom(c_, 0, uint16_t(std::strlen(name)), name), nullptr)};
  return r ? r->atom : 0;
}

std::vector<uint32_t> X11TaskbarWindows::docks() {
  std::vector<uint32_t> out;
  if (!c_) return out;
  const uint32_t type = atom("_NET_WM_WINDOW_TYPE"), dock = atom("_NET_WM_WINDOW_TYPE_DOCK");
  // The window manager's clients; with no window manager, the root's children.
  std::vector<uint32_t> candidates;
  Reply<xcb_get_property_reply_t> list{xcb_get_property_reply(
      c_, xcb_get_property(c_, 0, root_, atom("_NET_CLIENT_LIST"), XCB_ATOM_WINDOW, 0, 4096), nullptr)};
  if (list && xcb_get_property_value_length(list.p) > 0) {
    const auto* w = static_cast<const uint32_t*>(xcb_get_property_value(list.p));
    candidates.assign(w, w + xcb_get_property_value_length(list.p) / 4);
  } else {
    Reply<xcb_query_tree_reply_t> tree{xcb_query_tree_reply(c_, xcb_query_tree(c_, root_), nullptr)};
    if (tree) {
      const xcb_window_t* w = xcb_query_tree_children(tree.p);
      candidates.assign(w, w + xcb_query_tree_children_length(tree.p));
    }
  }
  for (uint32_t w : candidates) {
    Reply<xcb_get_property_reply_t> t{
        xcb_get_property_reply(c_, xcb_get_property(c_, 0, w, type, XCB_ATOM_ATOM, 0, 32), nullptr)};
    if (!t) continue;
    const auto* a = static_cast<const uint32_t*>(xcb_get_property_value(t.p));
    const int n = xcb_get_property_value_length(t.p) / 4;
    if (std::find(a, a + n, dock) != a + n) out.push_back(w);
  }
  for (uint32_t w : hidden_)
    if (std::find(out.begin(), out.end(), w) == out.end()) out.push_back(w);
  return out;
}

int64_t X11TaskbarWindows::FindWindow(const QString&, const QString&) {
  const std::vector<uint32_t> d = docks();
  return d.empty() ? 0 : int64_t(d.front());
}

int32_t X11TaskbarWindows::ShowWindow(int64_t hwnd, int32_t nCmdShow) {
  if (!c_ || hwnd == 0) return 0;
  Reply<xcb_get_window_attributes_reply_t> attr{
      xcb_get_window_attributes_reply(c_, xcb_get_window_attributes(c_, uint32_t(hwnd)), nullptr)};
  if (!attr) return 0;
  const bool wasVisible = attr->map_state == XCB_MAP_STATE_VIEWABLE;
  for (uint32_t w : docks()) {
    if (nCmdShow) {
      xcb_map_window(c_, w);
      hidden_.erase(std::remove(hidden_.begin(), hidden_.end(), w), hidden_.end());
    } else {
      xcb_unmap_window(c_, w);
      if (std::find(hidden_.begin(), hidden_.end(), w) == hidden_.end()) hidden_.push_back(w);
    }
  }
  // Wait for the server to have done it, so that the next question sees the new state.
  free(xcb_get_input_focus_reply(c_, xcb_get_input_focus(c_), nullptr));
  return wasVisible ? 1 : 0;
}

#else  // no xcb at build time: there is never a display to reach

X11TaskbarWindows::X11TaskbarWindows(const QString&) {}
X11TaskbarWindows::~X11TaskbarWindows() = default;
uint32_t X11TaskbarWindows::atom(const char*) { return 0; }
std::vector<uint32_t> X11TaskbarWindows::docks() { return {}; }
int64_t X11TaskbarWindows::FindWindow(const QString&, const QString&) { return 0; }
int32_t X11TaskbarWindows::ShowWindow(int64_t, int32_t) { return 0; }

#endif

bool installX11Taskbar() {
  static X11TaskbarWindows windows;
  if (!windows.connected()) return false;
  Taskbar::setWindows(&windows);
  return true;
}

}  // namespace tq7
