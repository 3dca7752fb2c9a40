#pragma once

#include <QObject>
#include <QPointer>

/// A weak reference to a QObject that implements `Protocol`: null after the object is destroyed.
template <class Protocol>
class WeakDelegate {
 public:
  WeakDelegate() = default;

  template <class Adopter>
  WeakDelegate(Adopter *adopter) : m_object(adopter), m_protocol(adopter) {}

  [[nodiscard]] Protocol *get() const { return m_object.isNull() ? nullptr : m_protocol; }
  Protocol *operator->() const { return get(); }
  explicit operator bool() const { return get() != nullptr; }

 private:
  QPointer<QObject> m_object;
  Protocol *m_protocol = nullptr;
};
