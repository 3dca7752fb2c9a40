#pragma once

#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

/// What a store of this program holds: its entities with their attributes, and the indexes that
/// serve the fetches. A stored file carries the number of the model that it was made with.
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
    /// The attributes of each index.
    std::vector<QStringList> indexes;
  };

  /// Reads the model resource at `url`; a resource that is missing gives a model of nothing.
  explicit ManagedObjectModel(const QString &url);

  /// The model "QIR_Pick" that comes with the program.
  static QString bundledUrl();

  [[nodiscard]] int version() const { return m_version; }
  [[nodiscard]] const std::vector<Entity> &entities() const { return m_entities; }

 private:
  int m_version = 0;
  std::vector<Entity> m_entities;
};
