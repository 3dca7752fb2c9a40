#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickStyle>

/// The smallest program with a Qt Quick Controls window, for comparison of the start.
int main(int argc, char **argv) {
  const QGuiApplication application(argc, argv);
  QQuickStyle::setStyle(QStringLiteral("Basic"));
  const QQmlApplicationEngine engine(
      QUrl(QStringLiteral("qrc:/qt/qml/CartonPick/Bench/EmptyWindow.qml")));
  return QGuiApplication::exec();
}
