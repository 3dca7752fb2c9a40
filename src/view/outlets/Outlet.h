#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

/// What all outlets have in common: a name, which the screen's item carries too, and one signal
/// that says that the outlet looks different now.
class Outlet : public QObject {
  Q_OBJECT
  QML_ANONYMOUS

 public:
  Outlet(const char *name, QObject *parent) : QObject(parent) {
    setObjectName(QString::fromLatin1(name));
  }

 signals:
  void changed();

 protected:
  /// Stores `value` in `member`; says so only if it is another value.
  template <class Value>
  void change(Value &member, const Value &value) {
    if (member == value) {
      return;
    }
    member = value;
    emit changed();
  }
};

/// Declares an outlet of a controller: the object, which belongs to the controller, and the
/// property by which the controller's screen binds to it.
#define OUTLET(Type, name)                    \
  Q_PROPERTY(Type *name MEMBER name CONSTANT) \
 public:                                      \
  Type *const name = new Type(#name, this);
