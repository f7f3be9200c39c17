#include "basbddtable.h"

#include "node_order.h"

static_assert(sizeof(BDD_HASH) == sizeof(UT_HASH) && sizeof(UT_HASH) == 24 &&
                  sizeof(BDD_TREE) == sizeof(UT_BTR_TREE) && sizeof(UT_BTR_TREE) == 24,
              "the library and its host share the layout of the containers");

namespace {

/// What the host is told to expect; a host that fixes the number of its buckets wants a prime.
constexpr unsigned int expected_nodes = 3089;

} // namespace

BDD_HASH::BDD_HASH() : UT_HASH(expected_nodes, 1) {}

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
