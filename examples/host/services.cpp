// Every service that the library needs from its host, on the standard containers. The program that
// links this file needs no libbasbdhost.

#include "services.h"

#include "bd_dynamic_ld.h"
#include "ut_btr_tree.h"
#include "ut_fastmem.h"
#include "ut_hash.h"
#include "ut_msgman.h"
#include "ut_text.h"

#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>
#include <set>
#include <string>
#include <unordered_set>
#include <vector>

// The library copies the load identifier while it is loaded; a constant is in place by then.
std::int64_t BD_DYNAMIC_LD::dynamic_id = 2026;

// ---- Pool. It is called while the library is loaded, before any constructor of this file runs,
// so it keeps nothing in objects of static storage duration. It is for hosts of one thread.

class UT_FASTMEM::STATE {
public:
    std::size_t block_size;
    std::size_t blocks_per_chunk;
    std::vector<std::unique_ptr<std::max_align_t[]>> chunks;
    std::vector<void*> free_blocks;
};

UT_FASTMEM::UT_FASTMEM(unsigned long block_size, unsigned long blocks_per_chunk)
    : state(new STATE{block_size, blocks_per_chunk, {}, {}})
{
}

UT_FASTMEM::~UT_FASTMEM() { delete state; }

void* UT_FASTMEM::getnewptr()
{
    if (state->free_blocks.empty()) {
        constexpr std::size_t unit = sizeof(std::max_align_t);
        const std::size_t units = (state->block_size + unit - 1) / unit;
        state->free_blocks.reserve((state->chunks.size() + 1) * state->blocks_per_chunk);
        state->chunks.push_back(
            std::make_unique<std::max_align_t[]>(units * state->blocks_per_chunk));
        for (std::size_t i = state->blocks_per_chunk; i-- > 0;) {
            state->free_blocks.push_back(&state->chunks.back()[i * units]);
        }
    }
    void* block = state->free_blocks.back();
    state->free_blocks.pop_back();
    return block;
}

// There is room for the block: getnewptr reserved it for all that it made.
void UT_FASTMEM::free(void* block) { state->free_blocks.push_back(block); }

// ---- Hash table.

class UT_HASH::STATE {
public:
    struct hooked_hash {
        UT_HASH* table;
        std::size_t operator()(const void* key) const { return table->hash_func(key); }
    };
    struct hooked_equality {
        UT_HASH* table;
        bool operator()(const void* key, void* entry) const
        {
            return table->comp_func(key, entry) == 0;
        }
    };
    using entry_set = std::unordered_set<void*, hooked_hash, hooked_equality>;
    entry_set entries;
};

// The size is a hint. Small functions have tables of a few entries, so this host starts small.
UT_HASH::UT_HASH(unsigned int /*size*/, unsigned char keep_flag)
    : state(new STATE{STATE::entry_set(0, STATE::hooked_hash{this}, STATE::hooked_equality{this})}),
      flag(keep_flag)
{
}

UT_HASH::~UT_HASH() { delete state; }

void* UT_HASH::s_add(const void* key, void* /*data*/)
{
    return *state->entries.insert(const_cast<void*>(key)).first;
}

void* UT_HASH::s_find(const void* key)
{
    const auto found = state->entries.find(const_cast<void*>(key));
    return found == state->entries.end() ? nullptr : *found;
}

void* UT_HASH::s_remove(const void* key)
{
    void* entry = s_find(key);
    if (entry != nullptr) {
        state->entries.erase(entry);
    }
    return entry;
}

// The entries leave the table before the first is freed: no hook sees a freed one. They leave by a
// swap, for this is called by a destructor and must not run out of memory.
void UT_HASH::process_and_kill(unsigned char kill, void (*each)(void*))
{
    STATE::entry_set taken(0, state->entries.hash_function(), state->entries.key_eq());
    taken.swap(state->entries);
    for (void* entry : taken) {
        if (each != nullptr) {
            each(entry);
        }
        if (kill != 0) {
            del_func(entry);
        }
    }
}

// ---- Balanced tree.

class UT_BTR_TREE::STATE {
public:
    struct hooked_order {
        UT_BTR_TREE* tree;
        bool operator()(void* key, void* entry) const
        {
            return tree->comp_func(key, static_cast<const char*>(entry)) < 0;
        }
    };
    using entry_set = std::set<void*, hooked_order>;
    entry_set entries;
};

UT_BTR_TREE::UT_BTR_TREE(unsigned char keep_flag)
    : state(new STATE{STATE::entry_set(STATE::hooked_order{this})}), flag(keep_flag)
{
}

UT_BTR_TREE::~UT_BTR_TREE() { delete state; }

void* UT_BTR_TREE::s_add(const void* key, void* /*data*/)
{
    return *state->entries.insert(const_cast<void*>(key)).first;
}

void* UT_BTR_TREE::s_find(const void* key)
{
    const auto found = state->entries.find(const_cast<void*>(key));
    return found == state->entries.end() ? nullptr : *found;
}

void* UT_BTR_TREE::s_remove(const void* key)
{
    void* entry = s_find(key);
    if (entry != nullptr) {
        state->entries.erase(entry);
    }
    return entry;
}

void UT_BTR_TREE::flush(void (*each)(void**, void*))
{
    STATE::entry_set taken(state->entries.key_comp());
    taken.swap(state->entries);
    for (void* entry : taken) {
        if (each != nullptr) {
            each(&entry, nullptr);
        }
        del_func(entry);
    }
}

// ---- Messages. The receiver of a text frees it.

std::vector<std::string>& message_log()
{
    static std::vector<std::string> lines;
    return lines;
}

char* neoform(const char* format, ...)
{
    char* text = nullptr;
    std::va_list arguments;
    va_start(arguments, format);
    const int length = vasprintf(&text, format, arguments);
    va_end(arguments);
    if (length < 0) {
        throw std::bad_alloc();
    }
    return text;
}

void ut_status(const char* text)
{
    message_log().push_back(std::string("status: ") + text);
    std::free(const_cast<char*>(text));
}

// A report does not stop the library, and neither should its receiver.
void UT_MSGMAN::report(const char* /*text*/, const char* app, char* id, int line,
                       const char* /*rev*/, int /*kind*/, void* /*extra*/)
{
    message_log().push_back(std::string("report ") + id + " line " + std::to_string(line) + " in " +
                            app);
    std::free(id);
}

namespace {

class message_manager final : public UT_MSGMAN {};
message_manager manager;
char app_name[] = "host example";

} // namespace

// Read at every report: a host may set both at any time before the first one.
UT_MSGMAN* ut_msgman = &manager;
char* cae_appname = app_name;
