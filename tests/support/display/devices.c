/* The pointer and the keyboard of a Wayland session without hardware. As long as this program runs the session has
 * both; it obeys lines on standard input and answers each with a line, once the compositor has taken it:   point X Y
 * pixels of the whole screen, which is WIDTH x HEIGHT (the arguments of the program)   button NUMBER DOWN   1 left,
 * 2 middle, 3 right   wheel NOTCHES        toward the user is positive   key NAME DOWN        as XKB names them: a,
 * Escape, Shift_L, of the US layout */
#define _GNU_SOURCE
#include "devices-client-protocol.h"

#include <linux/input-event-codes.h>
#include <stdbool.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <time.h>
#include <unistd.h>
#include <wayland-client.h>
#include <xkbcommon/xkbcommon.h>

static struct wl_seat *seat;
static struct zwlr_virtual_pointer_manager_v1 *pointers;
static struct zwp_virtual_keyboard_manager_v1 *keyboards;
static struct zwlr_virtual_pointer_v1 *pointer;
static struct zwp_virtual_keyboard_v1 *keyboard;
static struct xkb_keymap *keymap;
static struct xkb_state *keys;
static uint32_t width, height;

static void *bound(struct wl_registry *registry, uint32_t name, const char *offered, const struct wl_interface *wanted,
                   void *before) {
  return strcmp(offered, wanted->name) != 0 ? before : wl_registry_bind(registry, name, wanted, 1);
}

static void offer(void *data, struct wl_registry *registry, uint32_t name, const char *interface, uint32_t version) {
  (void)data, (void)version;
  seat = bound(registry, name, interface, &wl_seat_interface, seat);
  pointers = bound(registry, name, interface, &zwlr_virtual_pointer_manager_v1_interface, pointers);
  keyboards = bound(registry, name, interface, &zwp_virtual_keyboard_manager_v1_interface, keyboards);
}

static void withdraw(void *data, struct wl_registry *registry, uint32_t name) {
  (void)data, (void)registry, (void)name;
}

static uint32_t now(void) {
  struct timespec time;
  clock_gettime(CLOCK_MONOTONIC, &time);
  return (uint32_t)(time.tv_sec * 1000 + time.tv_nsec / 1000000);
}

static bool point(int x, int y) {
  if (x < 0 || y < 0) return false;
  zwlr_virtual_pointer_v1_motion_absolute(pointer, now(), (uint32_t)x, (uint32_t)y, width, height);
  zwlr_virtual_pointer_v1_frame(pointer);
  return true;
}

static bool button(int number, int down) {
  static const uint32_t codes[] = {BTN_LEFT, BTN_MIDDLE, BTN_RIGHT};
  if (number < 1 || number > 3) return false;
  zwlr_virtual_pointer_v1_button(pointer, now(), codes[number - 1], down != 0);
  zwlr_virtual_pointer_v1_frame(pointer);
  return true;
}

static bool wheel(int notches) {
  const int step = notches < 0 ? -1 : 1;
  for (int i = 0; i != notches; i += step) {
    zwlr_virtual_pointer_v1_axis_source(pointer, WL_POINTER_AXIS_SOURCE_WHEEL);
    zwlr_virtual_pointer_v1_axis_discrete(pointer, now(), WL_POINTER_AXIS_VERTICAL_SCROLL, wl_fixed_from_int(15 * step),
                                          step);
    zwlr_virtual_pointer_v1_frame(pointer);
  }
  return true;
}

/* The key that gives a symbol without a shift; 0 for none. */
static xkb_keycode_t code_of(const char *name) {
  const xkb_keysym_t wanted = xkb_keysym_from_name(name, XKB_KEYSYM_NO_FLAGS);
  for (xkb_keycode_t code = xkb_keymap_min_keycode(keymap); code <= xkb_keymap_max_keycode(keymap); ++code) {
    const xkb_keysym_t *symbols;
    if (xkb_keymap_key_get_syms_by_level(keymap, code, 0, 0, &symbols) == 1 && symbols[0] == wanted) return code;
  }
  return 0;
}

static bool key(const char *name, int down) {
  const xkb_keycode_t code = code_of(name);
  if (!code) return false;
  zwp_virtual_keyboard_v1_key(keyboard, now(), code - 8, down != 0);
  xkb_state_update_key(keys, code, down ? XKB_KEY_DOWN : XKB_KEY_UP);
  zwp_virtual_keyboard_v1_modifiers(keyboard, xkb_state_serialize_mods(keys, XKB_STATE_MODS_DEPRESSED),
                                    xkb_state_serialize_mods(keys, XKB_STATE_MODS_LATCHED),
                                    xkb_state_serialize_mods(keys, XKB_STATE_MODS_LOCKED), 0);
  return true;
}

static bool obey(const char *line) {
  int first, second;
  char name[64];
  if (sscanf(line, "point %d %d", &first, &second) == 2) return point(first, second);
  if (sscanf(line, "button %d %d", &first, &second) == 2) return button(first, second);
  if (sscanf(line, "wheel %d", &first) == 1) return wheel(first);
  if (sscanf(line, "key %63s %d", name, &first) == 2) return key(name, first);
  return false;
}

/* The compositor reads the layout from a file. */
static bool send_layout(void) {
  const struct xkb_rule_names names = {.layout = "us"};
  struct xkb_context *context = xkb_context_new(XKB_CONTEXT_NO_FLAGS);
  keymap = context ? xkb_keymap_new_from_names(context, &names, XKB_KEYMAP_COMPILE_NO_FLAGS) : NULL;
  keys = keymap ? xkb_state_new(keymap) : NULL;
  char *text = keys ? xkb_keymap_get_as_string(keymap, XKB_KEYMAP_FORMAT_TEXT_V1) : NULL;
  if (!text) return false;
  const size_t size = strlen(text) + 1;
  const int file = memfd_create("layout", MFD_CLOEXEC);
  if (file < 0 || write(file, text, size) != (ssize_t)size) return false;
  zwp_virtual_keyboard_v1_keymap(keyboard, WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file, (uint32_t)size);
  close(file);
  free(text);
  return true;
}

static int fail(const char *what) {
  fprintf(stderr, "devices: %s\n", what);
  return 1;
}

int main(int argc, char **argv) {
  static const struct wl_registry_listener listener = {offer, withdraw};
  if (argc != 3) return fail("tell the width and the height of the screen");
  width = (uint32_t)atoi(argv[1]);
  height = (uint32_t)atoi(argv[2]);
  struct wl_display *display = wl_display_connect(NULL);
  if (!display) return fail("there is no compositor");
  wl_registry_add_listener(wl_display_get_registry(display), &listener, NULL);
  wl_display_roundtrip(display);
  if (!seat || !pointers || !keyboards) return fail("the compositor takes no devices of clients");
  pointer = zwlr_virtual_pointer_manager_v1_create_virtual_pointer(pointers, seat);
  keyboard = zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(keyboards, seat);
  if (!send_layout()) return fail("the layout of the keyboard can't be sent");
  wl_display_roundtrip(display);
  setvbuf(stdout, NULL, _IOLBF, 0);
  puts("ready");
  for (char line[128]; fgets(line, sizeof line, stdin);) {
    const bool known = obey(line);
    if (wl_display_roundtrip(display) < 0) return fail("the compositor is gone");
    puts(known ? "done" : "unknown");
  }
  return 0;
}
