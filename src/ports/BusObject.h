// An object of ours on this thread's bus connection, under a bus name of its own: methods that others call, and signals
// for whoever listens. Everything about it happens on the thread that created it, from its run loop.
//
// Values travel as property lists, by their D-Bus type:
//   b                  a boolean
//   y n q i u x t      an integer
//   s                  a string
//   aT                 an array of values of the type T
//   (TU...)            an array with one value for each type
//   a{sv}              a dictionary of booleans (b), integers (x), strings (s) and arrays of strings (as)
// What other programs' objects return and their signals carry may also hold
//   d                  a real
//   o g                a string
//   v                  what the variant holds
//   a{sT} a{oT}        a dictionary
// Methods take values of the basic types only; what they return and what signals carry may be of any.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "model/PropertyList.h"

namespace vorn {

struct BusArgument {
  std::string type;
  std::string name;  // for those who look at the object
};

// What a method returns: its values, or an error that changes nothing.
struct BusReply {
  std::vector<PropertyList> values;
  std::string errorName;  // a D-Bus error name ("org.vorn.Example.Error.Busy"); empty for success
  std::string errorText;

  static BusReply success(std::vector<PropertyList> values = {}) { return {std::move(values), {}, {}}; }
  static BusReply failure(std::string name, std::string text) { return {{}, std::move(name), std::move(text)}; }
};

using BusReturn = std::function<void(const BusReply& reply)>;

struct BusMethod {
  std::string name;
  std::vector<BusArgument> inputs;
  std::vector<BusArgument> outputs;
  // Gets one value for each input. The bus refuses a call with other types.
  std::function<BusReply(const std::vector<PropertyList>& inputs)> call;
  // In its place, where it matters who calls: the unique bus name of the calling connection.
  std::function<BusReply(const std::vector<PropertyList>& inputs, const std::string& connection)> callFrom{};
  // In its place, where the call returns only later: answer is called once, on the object's thread, also when the
  // object is gone. Gets the unique bus name of the calling connection, too.
  std::function<void(const std::vector<PropertyList>& inputs, const std::string& connection, BusReturn answer)>
      callLater{};
};

struct BusSignal {
  std::string name;
  std::vector<BusArgument> arguments;
};

struct BusObjectDescription {
  std::string busName;
  std::string path;
  std::string interface;
  std::vector<BusMethod> methods;
  std::vector<BusSignal> signals;
};

class BusObject {
 public:
  // Null, with the reason in error, when there is no bus, the name is another program's or something in the description
  // is no D-Bus name or type.
  static std::unique_ptr<BusObject> create(BusObjectDescription description, std::string* error = nullptr);
  ~BusObject();  // also gives the bus name up
  BusObject(const BusObject&) = delete;
  BusObject& operator=(const BusObject&) = delete;

  // Broadcasts a signal of the description. False when the values do not fit its arguments or the bus takes no more;
  // nothing is sent then.
  bool emit(const std::string& signal, const std::vector<PropertyList>& values);

 private:
  BusObject();
  struct State;
  std::unique_ptr<State> mState;
};

}  // namespace vorn
