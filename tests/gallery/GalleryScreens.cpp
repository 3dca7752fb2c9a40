#include "gallery/GalleryScreens.h"

#include "app/MainStoryboard.h"
#include "view/Environment.h"

#include <QDir>

// The linker keeps the registrations of a static library only if something refers to them.
void qml_register_types_CartonPick_Gallery();  // NOLINT(readability-identifier-naming)

void prepareGallery(Environment &environment) {
  Q_INIT_RESOURCE(gallery);
  qml_register_types_CartonPick_Gallery();
  fillMainStoryboard(environment.storyboard);
}
