#include "app/Screens.h"
#include "gallery/GalleryScreens.h"
#include "gallery/GalleryViewController.h"
#include "support/TestEnvironment.h"
#include "view/Window.h"

#include <QGuiApplication>
#include <QQuickWindow>

/// Shows the gallery until its window is closed. The optional argument is the home folder whose
/// display settings are used.
int main(int argc, char *argv[]) {
  const QGuiApplication application(argc, argv);
  TestEnvironment test;
  if (const QStringList arguments = QGuiApplication::arguments(); arguments.size() > 1) {
    test.environment.display = std::make_unique<DisplaySettings>(
        Folders{arguments.at(1)}, std::make_unique<SystemColourScheme>());
  }
  prepareGallery(test.environment);
  GalleryViewController gallery(test.environment);
  gallery.loadViewIfNeeded();
  Window window(gallery, test.environment);
  const Screens screens(window);
  return screens.quickWindow() == nullptr ? EXIT_FAILURE : QGuiApplication::exec();
}
