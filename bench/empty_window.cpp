#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickStyle>

/// A minimal program with a Qt Quick Controls window, as a baseline for startup time.
int main(int argc, char **argv) {
  const QGuiApplication application(argc, argv);
  QQuickStyle::setStyle(QStringLiteral("Basic"));
  const QQmlApplicationEngine engine(
      QUrl(QStringLiteral("qrc:/qt/qml/CartonPick/Bench/EmptyWindow.qml")));
  return QGuiApplication::exec();
}
