#include "app/Screens.h"

#include "app/IconProvider.h"
#include "platform/ScanGuard.h"
#include "platform/Window.h"

#include <QDebug>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickStyle>
#include <QQuickWindow>

// The registrations of static libraries are linked in only if something asks for them.
void qml_register_types_CartonPick();           // NOLINT(readability-identifier-naming)
void qml_register_types_CartonPick_Platform();  // NOLINT(readability-identifier-naming)
void qml_register_types_CartonPick_Panes();     // NOLINT(readability-identifier-naming)
void qml_register_types_CartonPick_App();       // NOLINT(readability-identifier-naming)

namespace {

void registerTypes() {
  qml_register_types_CartonPick();
  qml_register_types_CartonPick_Platform();
  qml_register_types_CartonPick_Panes();
  qml_register_types_CartonPick_App();
}

}  // namespace

Screens::Screens(Window &window) {
  registerTypes();
  QQuickStyle::setStyle(QStringLiteral("Basic"));
  m_engine = std::make_unique<QQmlEngine>();
  m_engine->addImportPath(QStringLiteral("qrc:/qt/qml"));
  m_engine->addImageProvider(QStringLiteral("icons"), new IconProvider);
  QQmlComponent component(m_engine.get(), QUrl(QStringLiteral("qrc:/qt/qml/CartonPick/Main.qml")));
  if (component.isReady()) {
    m_root.reset(component.createWithInitialProperties(
        {{QStringLiteral("state"), QVariant::fromValue(&window)}}));
  }
  const QList<QQmlError> errors = component.errors();
  for (const QQmlError &error : errors) {
    qCritical().noquote() << error.toString();
  }
  if (QQuickWindow *shown = quickWindow()) {
    m_guard = std::make_unique<ScanGuard>(*shown, window);
  }
}

Screens::~Screens() = default;

QQuickWindow *Screens::quickWindow() const {
  return qobject_cast<QQuickWindow *>(m_root.get());
}
