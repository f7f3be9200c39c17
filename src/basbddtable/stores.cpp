#include "basbddtable.h"

#include "basbddtable/edge.h"

static_assert(sizeof(BDD_HASH) == sizeof(UT_HASH) && sizeof(UT_HASH) == 24 &&
                  sizeof(BDD_TREE) == sizeof(UT_BTR_TREE) && sizeof(UT_BTR_TREE) == 24,
              "the library and its host share the layout of the containers");

namespace basbddtable {
namespace {

/// What the host is told; a host that fixes the number of its buckets wants a prime.
constexpr unsigned int bucket_hint = 3089;

/// @brief The order of nodes in both stores: compares variable, high edge and low edge, in this
/// order, as unsigned numbers.
/// @return -1, 0 or 1
int bdd_cmp(const BDD_NODE* a, const BDD_NODE* b)
{
    const auto three_way = [](auto x, auto y) {
        return static_cast<int>(x > y) - static_cast<int>(x < y);
    };
    if (a->varid != b->varid) {
        return three_way(a->varid, b->varid);
    }
    if (a->high != b->high) {
        return three_way(edge::value(a->high), edge::value(b->high));
    }
    return three_way(edge::value(a->low), edge::value(b->low));
}

} // namespace
} // namespace basbddtable

using basbddtable::bdd_cmp;
namespace edge = basbddtable::edge;

BDD_HASH::BDD_HASH() : UT_HASH(basbddtable::bucket_hint, 1) {}

BDD_HASH::~BDD_HASH()
{
    if (flag != 0) {
        process_and_kill(1, nullptr);
    }
}

unsigned int BDD_HASH::hash_func(const void* key)
{
    const auto* node = static_cast<const BDD_NODE*>(key);
    return static_cast<unsigned int>((edge::value(node->high) >> 3) + 2 * edge::value(node->low) +
                                     node->varid);
}

int BDD_HASH::comp_func(const void* key, void* entry)
{
    return bdd_cmp(static_cast<const BDD_NODE*>(key), static_cast<const BDD_NODE*>(entry));
}

void BDD_HASH::del_func(void* entry) { delete static_cast<BDD_NODE*>(entry); }

BDD_TREE::BDD_TREE() : UT_BTR_TREE(1) {}

BDD_TREE::~BDD_TREE() { flush(nullptr); }

void BDD_TREE::del_func(void* entry) { delete static_cast<BDD_NODE*>(entry); }

int BDD_TREE::comp_func(void* key, const char* entry)
{
    const void* node = entry;
    return bdd_cmp(static_cast<const BDD_NODE*>(key), static_cast<const BDD_NODE*>(node));
}
