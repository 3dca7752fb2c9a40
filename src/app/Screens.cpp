#include "app/Screens.h"

#include "app/IconProvider.h"
#include "app/TouchGuard.h"
#include "scanner/ScanGuard.h"
#include "view/Window.h"

#include <QDebug>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickStyle>
#include <QQuickWindow>

// The linker keeps the QML registration of a static library only if it is referenced.
// NOLINTBEGIN(readability-identifier-naming)
void qml_register_types_CartonPick();
void qml_register_types_CartonPick_Device();
void qml_register_types_CartonPick_View();
void qml_register_types_CartonPick_Summary();
void qml_register_types_CartonPick_History();
void qml_register_types_CartonPick_Picking();
void qml_register_types_CartonPick_App();
// NOLINTEND(readability-identifier-naming)

namespace {

void registerTypes() {
  qml_register_types_CartonPick();
  qml_register_types_CartonPick_Device();
  qml_register_types_CartonPick_View();
  qml_register_types_CartonPick_Summary();
  qml_register_types_CartonPick_History();
  qml_register_types_CartonPick_Picking();
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
    m_scanGuard = std::make_unique<ScanGuard>(*shown, window);
    // Installed last, it filters first: a refused touch never reaches the other filter.
    m_touchGuard = std::make_unique<TouchGuard>(*shown, window);
  }
}

Screens::~Screens() = default;

QQuickWindow *Screens::quickWindow() const {
  return qobject_cast<QQuickWindow *>(m_root.get());
}
