#include "basbddtable.h"

#include <cstddef>
#include <memory>

static_assert(sizeof(BDD_NODE) == 24 && offsetof(BDD_NODE, varid) == 0 &&
                  offsetof(BDD_NODE, high) == 8 && offsetof(BDD_NODE, low) == 16 &&
                  sizeof(BDD_TABLE) == 16 && offsetof(BDD_TABLE, store) == 0 &&
                  offsetof(BDD_TABLE, method) == 8,
              "hosts rely on the layout of a node and its table");

BDD_NODE::BDD_NODE() : BDD_NODE(0, nullptr, nullptr) {}

BDD_NODE::BDD_NODE(unsigned short id) : BDD_NODE(id, nullptr, nullptr) {}

BDD_NODE::BDD_NODE(unsigned short id, BDD_NODE* high_edge, BDD_NODE* low_edge)
    : varid(id), high(high_edge), low(low_edge)
{
}

BDD_TABLE::BDD_TABLE(BDD_STORE_METHOD store_method)
    : store(store_method == BDD_STORE_HASH ? static_cast<UT_STORE*>(new BDD_HASH) : new BDD_TREE),
      method(store_method)
{
}

BDD_NODE* BDD_TABLE::findoradd(unsigned short varid, BDD_NODE* high, BDD_NODE* low)
{
    const BDD_NODE key(varid, high, low);
    if (void* found = store->s_find(&key)) {
        return static_cast<BDD_NODE*>(found);
    }
    auto fresh = std::make_unique<BDD_NODE>(key);
    store->s_add(fresh.get(), nullptr);
    return fresh.release();
}
