#pragma once

#include <string>
#include <typeinfo>

#include "xctl/XctlLib.h"

namespace tessaly {

// One subscriber of a panel value: an object and the member operation to call on it. Observes the object;
// whoever subscribes keeps it alive until it has unsubscribed.
class ValueObserver {
 public:
  explicit ValueObserver(const void* object) : object_(object) {}
  virtual ~ValueObserver() = default;
  ValueObserver(const ValueObserver&) = delete;
  ValueObserver& operator=(const ValueObserver&) = delete;

  virtual void deliver(const std::string& name, const ParameterValue& value) = 0;

  // True when both call the same operation of the same object.
  [[nodiscard]] virtual bool same(const ValueObserver& other) const = 0;

  [[nodiscard]] const void* object() const { return object_; }

 private:
  const void* object_;
};

template <class Owner>
class MemberObserver final : public ValueObserver {
 public:
  // Not virtual: pointers to virtual operations cannot be compared reliably.
  using Operation = void (Owner::*)(const std::string& name, const ParameterValue& value);

  MemberObserver(Owner* object, Operation operation)
      : ValueObserver(object), owner_(object), operation_(operation) {}

  void deliver(const std::string& name, const ParameterValue& value) override {
    (owner_->*operation_)(name, value);
  }

  [[nodiscard]] bool same(const ValueObserver& other) const override {
    return object() == other.object() && typeid(*this) == typeid(other) &&
           operation_ == static_cast<const MemberObserver&>(other).operation_;
  }

 private:
  Owner* owner_;
  Operation operation_;
};

}  // namespace tessaly
