#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickStyle>

/// The least that a program with a window of Qt Quick Controls has to start.
int main(int argc, char **argv) {
  const QGuiApplication application(argc, argv);
  QQuickStyle::setStyle(QStringLiteral("Basic"));
  const QQmlApplicationEngine engine(
      QUrl(QStringLiteral("qrc:/qt/qml/CartonPick/Bench/EmptyWindow.qml")));
  return QGuiApplication::exec();
}
