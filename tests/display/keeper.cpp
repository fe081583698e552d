// A clipboard manager for an X server: it takes over the text of programs that end. On standard output it says that it
// serves, and how long each text is that it has taken.

#include <xcb/xcb.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

xcb_connection_t *const server = xcb_connect(nullptr, nullptr);
xcb_window_t window;

xcb_atom_t atom(const char *name) {
  const auto cookie = xcb_intern_atom(server, 0, static_cast<uint16_t>(std::strlen(name)), name);
  xcb_intern_atom_reply_t *const reply = xcb_intern_atom_reply(server, cookie, nullptr);
  const xcb_atom_t found = reply ? reply->atom : XCB_NONE;
  std::free(reply);
  return found;
}

const xcb_atom_t clipboard = atom("CLIPBOARD"), manager = atom("CLIPBOARD_MANAGER"), save = atom("SAVE_TARGETS"),
                 targets = atom("TARGETS"), utf8 = atom("UTF8_STRING"), taken = atom("TAKEN");

void answer(const xcb_selection_request_event_t &request, xcb_atom_t property) {
  xcb_selection_notify_event_t notice{};
  notice.response_type = XCB_SELECTION_NOTIFY;
  notice.time = request.time;
  notice.requestor = request.requestor;
  notice.selection = request.selection;
  notice.target = request.target;
  notice.property = property;
  xcb_send_event(server, 0, request.requestor, 0, reinterpret_cast<const char *>(&notice));
  xcb_flush(server);
}

// Asks the program that has the clipboard, and has it from then on. What comes in several parts is left.
std::string takeText(xcb_timestamp_t time) {
  std::string text;
  xcb_convert_selection(server, window, clipboard, utf8, taken, time);
  xcb_flush(server);
  for (bool come = false; !come;) {
    xcb_generic_event_t *const event = xcb_wait_for_event(server);
    if (!event) std::exit(1);
    come = (event->response_type & 0x7F) == XCB_SELECTION_NOTIFY;
    std::free(event);
  }
  const auto cookie = xcb_get_property(server, 1, window, taken, XCB_GET_PROPERTY_TYPE_ANY, 0, 1 << 20);
  if (xcb_get_property_reply_t *const reply = xcb_get_property_reply(server, cookie, nullptr)) {
    text.assign(static_cast<const char *>(xcb_get_property_value(reply)),
                static_cast<size_t>(xcb_get_property_value_length(reply)));
    std::free(reply);
  }
  xcb_set_selection_owner(server, window, clipboard, time);
  std::printf("took %zu\n", text.size());
  return text;
}

void serve(const xcb_selection_request_event_t &request) {
  static std::string text;
  if (request.selection == manager && request.target == save) {
    text = takeText(request.time);
    return answer(request, request.property);
  }
  const bool lists = request.target == targets, isText = request.target == utf8;
  if (request.selection != clipboard || !(lists || isText)) return answer(request, XCB_NONE);
  const xcb_atom_t offered[] = {targets, utf8};
  if (lists)
    xcb_change_property(server, XCB_PROP_MODE_REPLACE, request.requestor, request.property, XCB_ATOM_ATOM, 32, 2,
                        offered);
  else
    xcb_change_property(server, XCB_PROP_MODE_REPLACE, request.requestor, request.property, utf8, 8,
                        static_cast<uint32_t>(text.size()), text.data());
  answer(request, request.property);
}

} // namespace

int main() {
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  if (xcb_connection_has_error(server)) return 1;
  const xcb_screen_t *const screen = xcb_setup_roots_iterator(xcb_get_setup(server)).data;
  window = xcb_generate_id(server);
  xcb_create_window(server, 0, window, screen->root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, 0, 0, nullptr);
  xcb_set_selection_owner(server, window, manager, XCB_CURRENT_TIME);
  xcb_flush(server);
  std::puts("serves");
  while (xcb_generic_event_t *const event = xcb_wait_for_event(server)) {
    if ((event->response_type & 0x7F) == XCB_SELECTION_REQUEST)
      serve(*reinterpret_cast<const xcb_selection_request_event_t *>(event));
    std::free(event);
  }
  return 0; // the server has ended
}
