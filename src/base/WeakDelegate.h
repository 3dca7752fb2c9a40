#pragma once

#include <QObject>
#include <QPointer>

/// A reference to the object that adopts `Protocol`, which does not keep it alive: once the object
/// is gone the reference reads as nothing.
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
