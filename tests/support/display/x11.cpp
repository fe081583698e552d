// The person at an X server: presses come from the test extension, what is shown is read from the tree of windows and
// its properties, and wishes go to the window manager as those of a panel do. Without one they go to the window itself.

#include "support/display/private.h"

#include <xcb/xcb.h>
#include <xcb/xtest.h>
#include <xkbcommon/xkbcommon.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <poll.h>
#include <stdexcept>

namespace {

using Words = std::vector<uint32_t>;

struct Free {
  void operator()(void *reply) const { std::free(reply); }
};
template <class Reply> using Owned = std::unique_ptr<Reply, Free>;
template <class Reply> Owned<Reply> owned(Reply *reply) { return Owned<Reply>(reply); }

constexpr uint32_t kFromPanel = 2; // who asks
constexpr uint32_t kRemove = 0, kAdd = 1;
constexpr uint32_t kIconic = 3; // in WM_STATE

class OnX11 : public X11User {
 public:
  OnX11() : connection_(xcb_connect(std::getenv("WQ_SESSION_DISPLAY"), nullptr)) {
    if (xcb_connection_has_error(connection_)) throw std::runtime_error("the X server of the session can't be reached");
    screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
    root_ = screen_->root;
    // where answers to pings arrive, by whichever mask they are sent
    const uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_, root_, XCB_CW_EVENT_MASK, &events);
    managed_ = !words(root_, "_NET_SUPPORTING_WM_CHECK").empty();
  }
  ~OnX11() override { xcb_disconnect(connection_); }

  void point(int x, int y) override { fake(XCB_MOTION_NOTIFY, 0, x, y); }
  void button(int number, bool down) override { fake(down ? XCB_BUTTON_PRESS : XCB_BUTTON_RELEASE, number); }
  void wheel(int notches) override {
    for (int left = std::abs(notches); left > 0; --left)
      for (const bool down : {true, false}) button(notches > 0 ? 5 : 4, down);
  }
  void key(const std::string &name, bool down) override { fake(down ? XCB_KEY_PRESS : XCB_KEY_RELEASE, codeOf(name)); }

  std::vector<Shown> windows() override {
    const uint32_t active = activeWindow();
    std::vector<Shown> all;
    for (const xcb_window_t top : children(root_))
      if (const xcb_window_t client = clientIn(top)) all.push_back(look(client, active));
    return all;
  }

  Picture picture() override {
    const auto size = owned(xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, root_), nullptr));
    const auto image = owned(xcb_get_image_reply(
        connection_,
        xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, root_, 0, 0, size->width, size->height, ~uint32_t{0}),
        nullptr));
    if (!image) throw std::runtime_error("the X server gives no picture");
    Picture picture{size->width, size->height, Words(size_t{size->width} * size->height)};
    std::memcpy(picture.pixels.data(), xcb_get_image_data(image.get()), picture.pixels.size() * sizeof(uint32_t));
    for (uint32_t &pixel : picture.pixels) pixel = (pixel & 0xFF) << 16 | (pixel & 0xFF00) | (pixel >> 16 & 0xFF);
    return picture;
  }

  void wish(const Shown &window, Wish wish) override {
    const Words maximised = {wish == Wish::maximise ? kAdd : kRemove, atom("_NET_WM_STATE_MAXIMIZED_HORZ"),
                             atom("_NET_WM_STATE_MAXIMIZED_VERT"), kFromPanel};
    if (!managed_) {
      if (wish == Wish::close) toWindow(window, "WM_PROTOCOLS", {atom("WM_DELETE_WINDOW")});
      if (wish == Wish::activate) xcb_set_input_focus(connection_, XCB_INPUT_FOCUS_PARENT, idOf(window), 0);
      return finish();
    }
    switch (wish) {
    case Wish::activate: return toManager(window, "_NET_ACTIVE_WINDOW", {kFromPanel});
    case Wish::close: return toManager(window, "_NET_CLOSE_WINDOW", {0, kFromPanel});
    case Wish::minimise: return toManager(window, "WM_CHANGE_STATE", {kIconic});
    case Wish::maximise: return toManager(window, "_NET_WM_STATE", maximised);
    case Wish::restore:
      if (window.minimised) return toManager(window, "_NET_ACTIVE_WINDOW", {kFromPanel});
      return toManager(window, "_NET_WM_STATE", maximised);
    }
  }

  void place(const Shown &window, const Place &client) override {
    const Words values = {static_cast<uint32_t>(client.x), static_cast<uint32_t>(client.y),
                          static_cast<uint32_t>(client.width), static_cast<uint32_t>(client.height)};
    constexpr uint32_t kStatic = 10, kAll = 0xF00; // the place is that of the client area; all four are told
    if (managed_)
      return toManager(window, "_NET_MOVERESIZE_WINDOW",
                       {kStatic | kAll | kFromPanel << 12, values[0], values[1], values[2], values[3]});
    xcb_configure_window(connection_, idOf(window),
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                         values.data());
    finish();
  }

  void scale(int factor) override {
    const std::string text = factor == 1 ? "" : "Xft.dpi:\t" + std::to_string(96 * factor) + "\n";
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, root_, XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING, 8,
                        static_cast<uint32_t>(text.size()), text.data());
    finish();
  }

  void cover(const Place &place) override {
    uncover();
    cover_ = xcb_generate_id(connection_);
    const Words values = {screen_->white_pixel, 1};
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, cover_, root_, static_cast<int16_t>(place.x),
                      static_cast<int16_t>(place.y), static_cast<uint16_t>(place.width),
                      static_cast<uint16_t>(place.height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT, values.data());
    xcb_map_window(connection_, cover_);
    finish();
  }
  void uncover() override {
    if (cover_) xcb_destroy_window(connection_, cover_);
    cover_ = 0;
    finish();
  }

  bool answersPing(const Shown &window) override {
    const uint32_t ping = atom("_NET_WM_PING");
    while (owned(xcb_poll_for_event(connection_))) {}
    toWindow(window, "WM_PROTOCOLS", {ping, 0, idOf(window)});
    const auto last = std::chrono::steady_clock::now() + std::chrono::seconds(1);
    while (std::chrono::steady_clock::now() < last) {
      while (const auto event = owned(xcb_poll_for_event(connection_))) {
        if ((event->response_type & 0x7F) != XCB_CLIENT_MESSAGE) continue;
        const auto *message = reinterpret_cast<const xcb_client_message_event_t *>(event.get());
        if (message->data.data32[0] == ping && message->data.data32[2] == window.id) return true;
      }
      pollfd file = {xcb_get_file_descriptor(connection_), POLLIN, 0};
      poll(&file, 1, 10);
    }
    return false;
  }

  std::vector<Icon> icons(const Shown &window) override {
    std::vector<Icon> all;
    const Words told = words(idOf(window), "_NET_WM_ICON");
    for (size_t at = 0; at + 2 < told.size();) {
      const size_t count = size_t{told[at]} * told[at + 1], first = at + 2;
      if (count > told.size() - first) break;
      all.push_back(
          {static_cast<int>(told[at]), static_cast<int>(told[at + 1]),
           Words(told.begin() + static_cast<ptrdiff_t>(first), told.begin() + static_cast<ptrdiff_t>(first + count))});
      at = first + count;
    }
    return all;
  }

 private:
  static xcb_window_t idOf(const Shown &window) { return static_cast<xcb_window_t>(window.id); }

  // Waits until the server has done everything asked for.
  void finish() { owned(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr)); }

  uint32_t atom(const std::string &name) {
    uint32_t &known = atoms_[name];
    if (known) return known;
    const auto cookie = xcb_intern_atom(connection_, 0, static_cast<uint16_t>(name.size()), name.c_str());
    const auto reply = owned(xcb_intern_atom_reply(connection_, cookie, nullptr));
    return known = reply ? reply->atom : 0;
  }

  // A property is asked for and read in two steps: what is asked for at once takes one way to the server and back.
  xcb_get_property_cookie_t ask(xcb_window_t window, const std::string &name) {
    return xcb_get_property(connection_, 0, window, atom(name), XCB_ATOM_ANY, 0, 1 << 20);
  }
  // Its bytes; nothing when the window has none, or is gone.
  std::string bytes(xcb_get_property_cookie_t asked) {
    const auto reply = owned(xcb_get_property_reply(connection_, asked, nullptr));
    if (!reply) return {};
    return {static_cast<const char *>(xcb_get_property_value(reply.get())),
            static_cast<size_t>(xcb_get_property_value_length(reply.get()))};
  }
  Words words(xcb_get_property_cookie_t asked) {
    const std::string all = bytes(asked);
    Words numbers(all.size() / sizeof(uint32_t));
    std::memcpy(numbers.data(), all.data(), numbers.size() * sizeof(uint32_t));
    return numbers;
  }
  Words words(xcb_window_t window, const std::string &name) { return words(ask(window, name)); }

  std::vector<xcb_window_t> children(xcb_window_t window) {
    const auto tree = owned(xcb_query_tree_reply(connection_, xcb_query_tree(connection_, window), nullptr));
    if (!tree) return {};
    const xcb_window_t *first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
  }

  // The program's window in one on top: inside a frame, which the manager marks so, or the window itself.
  xcb_window_t clientIn(xcb_window_t top) {
    if (const xcb_window_t framed = marked(top, 3)) return framed;
    const auto cookie = xcb_get_window_attributes(connection_, top);
    const auto attributes = owned(xcb_get_window_attributes_reply(connection_, cookie, nullptr));
    const bool shown = attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    return shown && !bytes(ask(top, "WM_CLASS")).empty() ? top : 0;
  }
  xcb_window_t marked(xcb_window_t window, int depth) {
    const Words state = words(window, "WM_STATE");
    if (!state.empty()) return state[0] ? window : 0;
    if (depth > 0)
      for (const xcb_window_t child : children(window))
        if (const xcb_window_t found = marked(child, depth - 1)) return found;
    return 0;
  }

  uint32_t activeWindow() {
    if (managed_) {
      const Words active = words(root_, "_NET_ACTIVE_WINDOW");
      return active.empty() ? 0 : active[0];
    }
    const auto focus = owned(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    return focus ? focus->focus : 0;
  }

  Shown look(xcb_window_t window, uint32_t active) {
    const auto title = ask(window, "_NET_WM_NAME"), program = ask(window, "WM_CLASS"), state = ask(window, "WM_STATE"),
               more = ask(window, "_NET_WM_STATE"), opacity = ask(window, "_NET_WM_WINDOW_OPACITY");
    const auto size = xcb_get_geometry(connection_, window);
    const auto corner = xcb_translate_coordinates(connection_, window, root_, 0, 0);
    Shown shown;
    shown.id = window;
    shown.active = window == active;
    shown.title = bytes(title);
    const std::string both = bytes(program); // the instance and the class, each with an end mark
    shown.program = both.substr(std::min(both.find('\0'), both.size() - 1) + 1).c_str();
    const Words iconic = words(state), states = words(more), part = words(opacity);
    const auto has = [&](const char *name) { return std::count(states.begin(), states.end(), atom(name)) > 0; };
    shown.minimised = !iconic.empty() && iconic[0] == kIconic;
    shown.maximised = has("_NET_WM_STATE_MAXIMIZED_HORZ") && has("_NET_WM_STATE_MAXIMIZED_VERT");
    shown.above = has("_NET_WM_STATE_ABOVE");
    if (!part.empty()) shown.opacity = part[0] / 4294967295.0;
    const auto extent = owned(xcb_get_geometry_reply(connection_, size, nullptr));
    const auto origin = owned(xcb_translate_coordinates_reply(connection_, corner, nullptr));
    if (extent && origin) shown.client = {origin->dst_x, origin->dst_y, extent->width, extent->height};
    return shown;
  }

  void send(xcb_window_t to, uint32_t mask, xcb_window_t about, const std::string &type, const Words &data) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = about;
    event.type = atom(type);
    std::copy(data.begin(), data.end(), event.data.data32);
    xcb_send_event(connection_, 0, to, mask, reinterpret_cast<const char *>(&event));
    finish();
  }
  void toManager(const Shown &window, const std::string &type, const Words &data) {
    send(root_, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT, idOf(window), type, data);
  }
  void toWindow(const Shown &window, const std::string &type, const Words &data) {
    send(idOf(window), XCB_EVENT_MASK_NO_EVENT, idOf(window), type, data);
  }

  void fake(int what, int detail, int x = 0, int y = 0) {
    xcb_test_fake_input(connection_, static_cast<uint8_t>(what), static_cast<uint8_t>(detail), 0, root_,
                        static_cast<int16_t>(x), static_cast<int16_t>(y), 0);
    finish();
  }

  // The key that gives a symbol without a shift.
  uint8_t codeOf(const std::string &name) {
    const xkb_keysym_t wanted = xkb_keysym_from_name(name.c_str(), XKB_KEYSYM_NO_FLAGS);
    const xcb_setup_t *setup = xcb_get_setup(connection_);
    const auto count = static_cast<uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const auto cookie = xcb_get_keyboard_mapping(connection_, setup->min_keycode, count);
    const auto map = owned(xcb_get_keyboard_mapping_reply(connection_, cookie, nullptr));
    for (int i = 0; map && i < count; ++i)
      if (xcb_get_keyboard_mapping_keysyms(map.get())[i * map->keysyms_per_keycode] == wanted)
        return static_cast<uint8_t>(setup->min_keycode + i);
    throw std::runtime_error("the keyboard has no key " + name);
  }

  xcb_connection_t *connection_;
  xcb_screen_t *screen_;
  xcb_window_t root_, cover_ = 0;
  bool managed_;
  std::map<std::string, uint32_t> atoms_;
};

} // namespace

std::unique_ptr<X11User> makeX11User() { return std::make_unique<OnX11>(); }
