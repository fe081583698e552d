// Stands for the service of a desktop that shows dialogs for files.
//   portal COMMAND [ARGUMENT...]   serves as long as the command runs, on the bus of the session; its status is the command's
// What is asked is written line by line on standard output. A question's title says what becomes of it:
//   cancel, fail      what the user or the service answers
//   wait              nobody answers; the line "closed" tells that it was taken back
//   silent, refuse    the call isn't answered, or with an error
//   die               the service ends
//   URI...            what is chosen, separated by blanks; @N among them chooses a filter

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>
#include <QProcess>
#include <QTimer>

#include <cstdio>

namespace {

constexpr char kService[] = "org.freedesktop.portal.Desktop", kObject[] = "/org/freedesktop/portal/desktop";

void tell(const QString &line) {
  std::printf("%s\n", line.toUtf8().constData());
  std::fflush(stdout);
}

// As a text: filters are "text(patterns)", separated by bars.
QString textOf(const QVariant &value) {
  if (value.typeId() == QMetaType::QByteArray) {
    const QByteArray bytes = value.toByteArray();
    return QString::fromUtf8(bytes.chopped(1)) + (bytes.endsWith('\0') ? "" : " without its end");
  }
  if (!value.canConvert<QDBusArgument>()) return value.toString();
  const auto argument = value.value<QDBusArgument>();
  const auto filter = [](const QDBusArgument &from) {
    QString text, patterns;
    from.beginStructure();
    from >> text;
    from.beginArray();
    while (!from.atEnd()) {
      uint kind = 0;
      QString pattern;
      from.beginStructure();
      from >> kind >> pattern;
      from.endStructure();
      patterns += (patterns.isEmpty() ? "" : ";") + pattern;
    }
    from.endArray();
    from.endStructure();
    return text + "(" + patterns + ")";
  };
  if (argument.currentType() == QDBusArgument::StructureType) return filter(argument);
  QString all;
  argument.beginArray();
  while (!argument.atEnd()) all += (all.isEmpty() ? "" : "|") + filter(argument);
  argument.endArray();
  return all;
}

class Portal : public QDBusVirtualObject {
 public:
  QString introspect(const QString &) const override { return {}; }

  bool handleMessage(const QDBusMessage &message, const QDBusConnection &bus) override {
    if (message.member() == "Close") {
      tell("closed");
      return bus.send(message.createReply());
    }
    if (message.interface() != "org.freedesktop.portal.FileChooser") return false;
    const QVariantList arguments = message.arguments();
    const QString title = arguments[1].toString();
    const auto options = qdbus_cast<QVariantMap>(arguments[2]);
    tell(message.member() + " parent " + arguments[0].toString().left(4));
    for (auto option = options.begin(); option != options.end(); ++option)
      if (option.key() != "handle_token") tell(option.key() + " " + textOf(option.value()));
    return act(title, options, message, bus);
  }

 private:
  static bool act(const QString &title, const QVariantMap &options, const QDBusMessage &message,
                  const QDBusConnection &bus) {
    if (title == "silent") return true;
    if (title == "refuse") return bus.send(message.createErrorReply(QDBusError::Failed, "refused"));
    const QString sender = message.service().mid(1).replace('.', '_');
    const QString path = QString("%1/request/%2/%3").arg(kObject, sender, options["handle_token"].toString());
    bus.send(message.createReply(QVariant::fromValue(QDBusObjectPath(path))));
    constexpr int kUser = 200; // milliseconds that the user takes
    if (title == "wait") return true;
    QTimer::singleShot(kUser, [=] {
      if (title == "die")
        QDBusConnection(bus).unregisterService(kService);
      else
        answer(title, options, path, message.service(), bus);
    });
    return true;
  }

  static void answer(const QString &title, const QVariantMap &options, const QString &path, const QString &to,
                     const QDBusConnection &bus) {
    QDBusMessage response = QDBusMessage::createTargetedSignal(to, path, "org.freedesktop.portal.Request", "Response");
    QVariantMap results;
    if (title == "cancel" || title == "fail") {
      response << (title == "cancel" ? 1u : 2u) << results;
      bus.send(response);
      return;
    }
    QStringList uris = title.split(' ');
    if (!uris.isEmpty() && uris.last().startsWith('@')) {
      uris.removeLast();
      results["current_filter"] = options["current_filter"]; // as it came
    }
    results["uris"] = uris;
    response << 0u << results;
    bus.send(response);
  }
};

} // namespace

int main(int argc, char *argv[]) {
  QCoreApplication application(argc, argv);
  Portal portal;
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (argc < 2 || !bus.registerVirtualObject(kObject, &portal, QDBusConnection::SubPath) ||
      !bus.registerService(kService)) {
    std::fprintf(stderr, "portal: no command, or no bus\n");
    return 2;
  }
  QProcess command;
  command.setProcessChannelMode(QProcess::ForwardedChannels);
  QObject::connect(&command, &QProcess::finished, &application,
                   [](int status, QProcess::ExitStatus) { QCoreApplication::exit(status); });
  command.start(argv[1], application.arguments().mid(2));
  return QCoreApplication::exec();
}
