// The person at sway: the devices are those of the program devices, and sway tells and moves windows on its own socket,
// which swaymsg speaks.

#include "support/display/private.h"

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int kWidth = 1280, kHeight = 800; // of the screen, in its pixels

// The program that holds the devices; one line to it, one line from it.
class Devices {
 public:
  Devices() {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) throw std::runtime_error("no socket");
    const std::string program = programFolder() + "/devices";
    process_ = fork();
    if (process_ == 0) {
      dup2(ends[1], STDIN_FILENO);
      dup2(ends[1], STDOUT_FILENO);
      execl(program.c_str(), "devices", std::to_string(kWidth).c_str(), std::to_string(kHeight).c_str(), nullptr);
      _exit(127);
    }
    close(ends[1]);
    socket_ = ends[0];
    answers_ = fdopen(socket_, "r");
    expect("ready");
  }
  ~Devices() {
    std::fclose(answers_); // which ends it
    waitpid(process_, nullptr, 0);
  }
  Devices(const Devices &) = delete;
  Devices &operator=(const Devices &) = delete;

  void tell(const std::string &line) {
    dprintf(socket_, "%s\n", line.c_str());
    expect("done");
  }

 private:
  void expect(const std::string &answer) {
    char line[64] = "";
    if (!std::fgets(line, sizeof line, answers_) || line != answer + '\n')
      throw std::runtime_error("the devices answer " + std::string(line) + " instead of " + answer);
  }
  pid_t process_;
  int socket_;
  FILE *answers_;
};

void tellSway(const std::string &command) { outputOf("swaymsg -q '" + command + "'"); }

std::string about(const Shown &window) { return "[con_id=" + std::to_string(window.id) + "] "; }

class OnSway : public User {
 public:
  void point(int x, int y) override { devices_.tell("point " + std::to_string(x) + ' ' + std::to_string(y)); }
  void button(int number, bool down) override {
    devices_.tell("button " + std::to_string(number) + (down ? " 1" : " 0"));
  }
  void wheel(int notches) override { devices_.tell("wheel " + std::to_string(notches)); }
  void key(const std::string &name, bool down) override { devices_.tell("key " + name + (down ? " 1" : " 0")); }

  std::vector<Shown> windows() override {
    std::vector<Shown> all;
    const QByteArray told = QByteArray::fromStdString(outputOf("swaymsg -r -t get_tree"));
    collect(QJsonDocument::fromJson(told).object(), all);
    return all;
  }

  Picture picture() override {
    const std::string file = outputOf("grim -t ppm -");
    Picture picture;
    int header = 0;
    if (std::sscanf(file.c_str(), "P6 %d %d 255%*c%n", &picture.width, &picture.height, &header) != 2 || header == 0)
      throw std::runtime_error("grim gives no picture");
    const size_t count = static_cast<size_t>(picture.width) * static_cast<size_t>(picture.height);
    if (file.size() < static_cast<size_t>(header) + 3 * count) throw std::runtime_error("grim gives half a picture");
    const auto *byte = reinterpret_cast<const unsigned char *>(file.data()) + header;
    for (size_t i = 0; i < count; ++i, byte += 3)
      picture.pixels.push_back(byte[0] | uint32_t{byte[1]} << 8 | uint32_t{byte[2]} << 16);
    return picture;
  }

  void wish(const Shown &window, Wish wish) override {
    if (wish == Wish::activate) tellSway(about(window) + "focus");
    if (wish == Wish::close) tellSway(about(window) + "kill");
    if (wish != Wish::activate && wish != Wish::close) throw std::runtime_error("sway has no such state of windows");
  }

  void place(const Shown &window, const Place &client) override {
    const auto both = [&](int first, int second) {
      return std::to_string(first / scale_) + " px " + std::to_string(second / scale_) + " px";
    };
    tellSway(about(window) + "resize set " + both(client.width, client.height) + ", move absolute position " +
             both(client.x, client.y));
  }

  void scale(int factor) override {
    tellSway("output HEADLESS-1 scale " + std::to_string(factor));
    scale_ = factor;
  }

 private:
  Place placeOf(const QJsonObject &rect) const {
    const auto at = [&](const char *name) { return rect[QLatin1String(name)].toInt() * scale_; };
    return {at("x"), at("y"), at("width"), at("height")};
  }

  // Tiled windows lie below floating ones.
  void collect(const QJsonObject &node, std::vector<Shown> &all) const {
    if (node[QLatin1String("pid")].isDouble() && node[QLatin1String("visible")].toBool()) {
      Shown shown;
      shown.id = static_cast<uintptr_t>(node[QLatin1String("id")].toInteger());
      shown.title = node[QLatin1String("name")].toString().toStdString();
      shown.program = node[QLatin1String("app_id")].toString().toStdString();
      const Place inner = placeOf(node[QLatin1String("window_rect")].toObject());
      const Place outer = placeOf(node[QLatin1String("rect")].toObject());
      shown.client = {outer.x + inner.x, outer.y + inner.y, inner.width, inner.height};
      shown.active = node[QLatin1String("focused")].toBool();
      all.push_back(shown);
    }
    for (const char *kind : {"nodes", "floating_nodes"})
      for (const QJsonValue child : node[QLatin1String(kind)].toArray()) collect(child.toObject(), all);
  }

  Devices devices_;
  int scale_ = 1;
};

} // namespace

std::unique_ptr<User> makeWaylandUser() { return std::make_unique<OnSway>(); }
