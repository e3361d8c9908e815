#pragma once

#include <deque>

#include <QAbstractTableModel>
#include <QDateTime>

#include "widgets/Message.h"

namespace tessaly {

// What the strip has said in this run of the program, newest first; the oldest go.
class MessageLog : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { kTime, kGrade, kText, kWhere, kColumns };
  static constexpr std::size_t kMost = 200;

  using QAbstractTableModel::QAbstractTableModel;

  void add(const Message& message, const QDateTime& when = QDateTime::currentDateTime());
  // The rows as text, a line each.
  [[nodiscard]] QString copyOf(const QModelIndexList& rows) const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  struct Entry {
    QDateTime when;
    Message message;
  };
  [[nodiscard]] static QString text(const Entry& entry, int column);

  std::deque<Entry> entries_;
};

}  // namespace tessaly
