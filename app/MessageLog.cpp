#include "app/MessageLog.h"

#include <algorithm>

#include <QLocale>

namespace tessaly {

void MessageLog::add(const Message& message, const QDateTime& when) {
  if (entries_.size() == kMost) {
    beginRemoveRows({}, static_cast<int>(kMost) - 1, static_cast<int>(kMost) - 1);
    entries_.pop_back();
    endRemoveRows();
  }
  beginInsertRows({}, 0, 0);
  entries_.push_front({when, message});
  endInsertRows();
}

QString MessageLog::copyOf(const QModelIndexList& rows) const {
  std::vector<int> numbers;
  for (const QModelIndex& row : rows) numbers.push_back(row.row());
  std::sort(numbers.begin(), numbers.end());
  QString copied;
  for (const int row : numbers) {
    const Entry& entry = entries_[static_cast<std::size_t>(row)];
    QStringList cells;
    for (int column = 0; column < kColumns; ++column) cells << text(entry, column);
    copied += cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
  }
  return copied;
}

int MessageLog::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(entries_.size());
}

int MessageLog::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : kColumns; }

QString MessageLog::text(const Entry& entry, int column) {
  switch (column) {
    case kTime:
      return QLocale().toString(entry.when.time(), QStringLiteral("HH:mm:ss"));
    case kGrade:
      return gradeWord(entry.message.grade);
    case kText:
      return entry.message.text;
    case kWhere:
      return entry.message.where;
    default:
      return {};
  }
}

QVariant MessageLog::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const Entry& entry = entries_[static_cast<std::size_t>(index.row())];
  switch (role) {
    case Qt::DisplayRole:
      return text(entry, index.column());
    case Qt::ToolTipRole:
      return text(entry, index.column()).toHtmlEscaped();
    case Qt::DecorationRole:
      return index.column() == kGrade ? QVariant(rowMarkIcon(gradeMark(entry.message.grade))) : QVariant();
    default:
      return {};
  }
}

QVariant MessageLog::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  switch (section) {
    case kTime:
      return tr("Time");
    case kGrade:
      return tr("Grade");
    case kText:
      return tr("Message");
    case kWhere:
      return tr("Where");
    default:
      return {};
  }
}

}  // namespace tessaly
