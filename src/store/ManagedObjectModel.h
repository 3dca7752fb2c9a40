#pragma once

#include <QString>
#include <QStringList>

#include <vector>

/// The schema of the store: entities with their attributes and indexes, and a version number. A
/// store file records the version of the model that created it.
class ManagedObjectModel {
 public:
  struct Attribute {
    QString name;
    /// "TEXT" or "INTEGER".
    QString type;
  };
  struct Entity {
    QString name;
    std::vector<Attribute> attributes;
    /// For each index, the names of its attributes, in order.
    std::vector<QStringList> indexes;
  };

  /// Reads the model from the Qt resource `url`. The model is empty if there is no such resource.
  explicit ManagedObjectModel(const QString &url);

  /// The resource path of the built-in model "QIR_Pick".
  static QString bundledUrl();

  [[nodiscard]] int version() const { return m_version; }
  [[nodiscard]] const std::vector<Entity> &entities() const { return m_entities; }

 private:
  int m_version = 0;
  std::vector<Entity> m_entities;
};
