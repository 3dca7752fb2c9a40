#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

/// The base class of all outlets: the observable state of one item of a screen. The item's
/// objectName is the outlet's name; `changed` is emitted when what the item shows has changed.
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
  /// Sets `member` to `value` and emits `changed` if they differ.
  template <class Value>
  void change(Value &member, const Value &value) {
    if (member == value) {
      return;
    }
    member = value;
    emit changed();
  }
};

/// Declares an outlet of a controller: the object, a child of the controller, and the property that
/// the controller's screen binds to.
#define OUTLET(Type, name)                    \
  Q_PROPERTY(Type *name MEMBER name CONSTANT) \
 public:                                      \
  Type *const name = new Type(#name, this);
