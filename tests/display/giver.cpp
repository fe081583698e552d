// Another program, from whose window files are dragged away.
//   giver FILE...    a press in its window begins a drag of these files, whose end it tells, and then it ends

#include <QApplication>
#include <QDrag>
#include <QFile>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QWidget>

#include <cstdio>

namespace {

class Giver : public QWidget {
 public:
  explicit Giver(QList<QUrl> files) : files_(std::move(files)) {}

 protected:
  void mousePressEvent(QMouseEvent *) override {
    auto *const data = new QMimeData;
    data->setUrls(files_);
    auto *const drag = new QDrag(this);
    drag->setMimeData(data);
    const Qt::DropAction done = drag->exec(Qt::CopyAction | Qt::MoveAction | Qt::LinkAction, Qt::MoveAction);
    std::puts(done == Qt::CopyAction ? "copied" : done == Qt::IgnoreAction ? "refused" : "moved");
    QTimer::singleShot(1000, [] { QCoreApplication::quit(); }); // what was dropped may be asked for still
  }

 private:
  const QList<QUrl> files_;
};

} // namespace

int main(int argc, char **argv) {
  std::setvbuf(stdout, nullptr, _IOLBF, 0);
  const QApplication application(argc, argv);
  QList<QUrl> files;
  for (int i = 1; i < argc; ++i) files << QUrl::fromLocalFile(QFile::decodeName(argv[i]));
  Giver giver(files);
  giver.setWindowTitle("giver");
  giver.setGeometry(1100, 60, 100, 100);
  giver.show();
  return QApplication::exec();
}
