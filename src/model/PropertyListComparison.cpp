#include <cmath>
#include <unordered_set>
#include <utility>
#include <vector>

#include "model/PropertyListNodes.h"

namespace vorn {

namespace detail {
namespace {

bool sameReal(double left, double right) noexcept {
  return left == right || (std::isnan(left) && std::isnan(right));
}

bool sameKeys(const Shape* left, const Shape* right) noexcept {
  if (left == right) return true;
  if (left == nullptr || right == nullptr || left->count != right->count) return false;
  for (std::size_t i = 0; i < left->count; ++i) {
    if (left->keys()[i] != right->keys()[i] && left->key(i) != right->key(i)) return false;
  }
  return true;
}

// Compares two values level by level without recursion. A pair of containers that are both shared may be met again
// by another way; it is compared once, as a difference found anywhere ends the whole comparison.
class Comparison {
 public:
  bool equal(const PropertyList& left, const PropertyList& right) {
    if (!compare(left, right)) return false;
    while (!mPending.empty()) {
      const auto [first, second] = mPending.back();
      mPending.pop_back();
      for (std::size_t i = 0; i < first->count; ++i) {
        if (!compare(first->values()[i], second->values()[i])) return false;
      }
    }
    return true;
  }

 private:
  using Pair = std::pair<const ContainerNode*, const ContainerNode*>;
  struct PairHash {
    std::size_t operator()(const Pair& pair) const noexcept {
      return std::hash<const void*>()(pair.first) * 31 + std::hash<const void*>()(pair.second);
    }
  };

  // Two single values; equal containers of other storage are left for later.
  bool compare(const PropertyList& left, const PropertyList& right) {
    if (left.type() != right.type()) return false;
    if (NodeAccess::bits(left) == NodeAccess::bits(right)) return true;
    switch (left.type()) {
      case PropertyList::Type::Real:
      case PropertyList::Type::Date:
        return sameReal(std::bit_cast<double>(NodeAccess::bits(left)), std::bit_cast<double>(NodeAccess::bits(right)));
      case PropertyList::Type::String:
      case PropertyList::Type::Data:
        return textOf(NodeAccess::text(left)) == textOf(NodeAccess::text(right));
      case PropertyList::Type::Array:
      case PropertyList::Type::Dictionary:
        return postpone(NodeAccess::container(left), NodeAccess::container(right));
      default:
        return false;
    }
  }

  bool postpone(const ContainerNode* left, const ContainerNode* right) {
    if (left == nullptr || right == nullptr || left->count != right->count) return false;
    if (!sameKeys(left->shape, right->shape)) return false;
    const auto shared = [](const ContainerNode* node) { return node->references.load(std::memory_order_relaxed) > 1; };
    if (!shared(left) || !shared(right) || mSeen.emplace(left, right).second) mPending.emplace_back(left, right);
    return true;
  }

  std::vector<Pair> mPending;
  std::unordered_set<Pair, PairHash> mSeen;
};

}  // namespace
}  // namespace detail

bool operator==(const PropertyList& left, const PropertyList& right) noexcept {
  return detail::Comparison().equal(left, right);
}

}  // namespace vorn
