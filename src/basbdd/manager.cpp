#include "basbdd.h"
#include "constants.h"

#include <algorithm>
#include <cstddef>
#include <memory>

static_assert(sizeof(BDD_MANAGER) == 24 && offsetof(BDD_MANAGER, nvars) == 0 &&
                  offsetof(BDD_MANAGER, varsigs) == 8 && offsetof(BDD_MANAGER, table) == 16,
              "hosts rely on the layout of a manager");

namespace basbdd {

namespace {

struct table_deleter {
    void operator()(BDD_TABLE* table) const
    {
        delete table->store;
        delete table;
    }
};
using table_owner = std::unique_ptr<BDD_TABLE, table_deleter>;

} // namespace
} // namespace basbdd

BDD_MANAGER::BDD_MANAGER(BDD_STORE_METHOD method, unsigned short var_count, TECHMAP_SIG** sigs)
    : nvars(var_count)
{
    std::unique_ptr<TECHMAP_SIG*[]> owned_sigs(new TECHMAP_SIG*[var_count]);
    std::copy_n(sigs, var_count, owned_sigs.get());
    basbdd::table_owner owned_table(new BDD_TABLE(method));
    basbdd::make_constants();
    for (unsigned short var = 0; var < var_count; ++var) {
        owned_table->findoradd(var, basbdd_one, basbdd_zero);
    }
    varsigs = owned_sigs.release();
    table = owned_table.release();
}

BDD_MANAGER::~BDD_MANAGER()
{
    delete[] varsigs;
    basbdd::table_deleter()(table);
}

unsigned short BDD_MANAGER::sig2varid(TECHMAP_SIG* sig)
{
    TECHMAP_SIG** const end = varsigs + nvars;
    TECHMAP_SIG** const found = std::find(varsigs, end, sig);
    return found == end ? basbdd::no_variable : static_cast<unsigned short>(found - varsigs);
}
