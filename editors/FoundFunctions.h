#pragma once

#include <QAbstractListModel>

#include "model/FunctionFinder.h"

namespace tessaly {

// The functions of "Commands found". A row's text is put together when it is painted, so that any number of
// functions can stand here.
class FoundFunctions : public QAbstractListModel {
  Q_OBJECT

 public:
  explicit FoundFunctions(const FunctionDictionary& dictionary, QObject* parent = nullptr);

  void setFunctions(const FunctionFinder::Functions& functions);  // places in registration order
  void setRaw(bool raw);

  [[nodiscard]] FunctionRecord function(int row) const;
  [[nodiscard]] int rowOf(std::size_t function) const;  // -1 when it is not there

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

 private:
  const FunctionDictionary& dictionary_;
  FunctionFinder::Functions functions_;
  bool raw_ = false;
};

}  // namespace tessaly
