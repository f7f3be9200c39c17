#include "names.h"
#include "node.h"
#include "reports.h"
#include "tree_path.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

using namespace basbdbool;

constexpr std::size_t first_size = 256;
constexpr std::ptrdiff_t room_for_a_node = 16;

/// Capacity of the buffer that the thread's text is being written into.
thread_local std::size_t eqnbuffersize = first_size;

/// @brief The buffer of a text, replaced by a larger one as the text grows.
///
/// The position in it is a value that goes from hand to hand, so that the compiler keeps it in a
/// register. There is always room for a terminating zero.
class growing_buffer {
public:
    /// Works on the caller's own pointers, so that they are valid when memory ends.
    growing_buffer(char*& text, char*& text_end)
        : start(text), end(text_end), limit(text + eqnbuffersize)
    {
    }
    growing_buffer(const growing_buffer&) = delete;
    growing_buffer& operator=(const growing_buffer&) = delete;
    ~growing_buffer() { eqnbuffersize = static_cast<std::size_t>(limit - start); }

    /// Makes room for `size` characters and a zero. @return the position, maybe in a new buffer
    char* with_room(char* cur, std::ptrdiff_t size)
    {
        return limit - cur > size ? cur : grow(cur, size);
    }

    /// Doubles the buffer when the text comes within 16 bytes of its end; once per node.
    char* enter_node(char* cur)
    {
        *cur = '\0';
        return with_room(cur, room_for_a_node);
    }

private:
    [[gnu::noinline, gnu::cold]] char* grow(const char* cur, std::ptrdiff_t size)
    {
        const std::ptrdiff_t length = cur - start;
        std::ptrdiff_t capacity = limit - start;
        while (capacity <= length + size) {
            capacity *= 2;
        }
        char* const larger = new char[static_cast<std::size_t>(capacity)];
        end = std::copy_n(start, length, larger);
        delete[] std::exchange(start, larger);
        limit = start + capacity;
        return end;
    }

    char*& start;
    char*& end;
    char* limit; ///< the end of the buffer
};

/// Whether the right operand, an operator, stands in parentheses. A chain of one operator goes
/// without.
bool right_needs_parentheses(const BOOL_TNODE& node)
{
    return node.right->op != node.op || node.rcompl != 0;
}

/// Writes a character if asked to: without a branch, for complements stand anywhere. There must be
/// room for it in any case.
char* write_if(bool is_asked, char* cur, char character)
{
    *cur = character;
    return cur + static_cast<int>(is_asked);
}

char* write_operator(char* cur, signed char op)
{
    constexpr char characters[] = {'*', '@', '+'};
    if (op >= BOOL_OP_AND && op <= BOOL_OP_OR) {
        *cur++ = characters[op];
    }
    return cur;
}

[[gnu::always_inline]] inline char* write_leaf(growing_buffer& buffer, char* cur,
                                               const BOOL_TNODE& leaf, later_reports& reports)
{
    cur = buffer.enter_node(cur);
    if (is_constant(leaf)) {
        *cur++ = leaf.op == BOOL_OP_ONE ? '1' : '0';
        return cur;
    }
    if (!is_named_leaf(leaf)) {
        reports.add(report_site::leaf_without_name);
        return cur;
    }
    const char* name = name_text(leaf_name(leaf));
    if (name == nullptr) {
        reports.add(report_site::leaf_without_text);
        return cur;
    }
    for (; *name != '\0'; ++name) { // most names have one character
        cur = buffer.with_room(cur, 1);
        *cur++ = *name;
    }
    return cur;
}

/// Writes a tree, from its first node on to the last. @return the end of the text
[[gnu::noinline]] char* write_tree(growing_buffer& buffer, char* cur, BOOL_TNODE& root,
                                   later_reports& reports)
{
    if (basbd_is_leaf(root)) {
        return write_leaf(buffer, cur, root, reports);
    }
    const auto left = [&](const BOOL_TNODE& node) {
        cur = buffer.enter_node(cur);
        if (node.left == nullptr) {
            *cur++ = '0';
            return step::past;
        }
        cur = write_if(node.lcompl != 0, cur, '~');
        if (basbd_is_leaf(*node.left)) {
            cur = write_leaf(buffer, cur, *node.left, reports);
            return step::past;
        }
        *cur++ = '(';
        return step::below;
    };
    const auto right = [&](const BOOL_TNODE& node) {
        if (node.left == nullptr || node.right == nullptr) {
            return step::past;
        }
        cur = write_operator(buffer.with_room(cur, room_for_a_node), node.op);
        cur = write_if(node.rcompl != 0, cur, '~');
        if (basbd_is_leaf(*node.right)) {
            cur = write_leaf(buffer, cur, *node.right, reports);
            return step::past;
        }
        cur = write_if(right_needs_parentheses(node), cur, '(');
        return step::below;
    };
    walk(&root, left, right, [&](const BOOL_TNODE& node, branch side) {
        const bool is_closed = side == branch::left || right_needs_parentheses(node);
        cur = write_if(is_closed, buffer.with_room(cur, 1), ')');
    });
    return cur;
}

/// @brief The capacity of a text that is written, put back at the end of the scope, for reports may
/// write texts.
///
/// When they grow the buffer of this very text, the capacity is too small, which harms nothing.
struct kept_capacity {
    kept_capacity() = default;
    kept_capacity(const kept_capacity&) = delete;
    kept_capacity& operator=(const kept_capacity&) = delete;
    ~kept_capacity() { eqnbuffersize = capacity; }
    const std::size_t capacity = eqnbuffersize;
};

/// The buffer of a text that is not yet handed out.
struct owned_buffer {
    owned_buffer() : start(new char[first_size]) { eqnbuffersize = first_size; }
    owned_buffer(const owned_buffer&) = delete;
    owned_buffer& operator=(const owned_buffer&) = delete;
    ~owned_buffer() { delete[] start; }
    char* start;
};

} // namespace

char* BOOL_TNODE::writesubtree(char*& buf, char*& cur)
{
    later_reports reports;
    {
        growing_buffer text(buf, cur);
        cur = write_tree(text, cur, *this, reports);
    }
    const kept_capacity kept;
    reports.send();
    return cur;
}

char* BOOL_FUNC::writeeqn()
{
    owned_buffer buffer;
    later_reports reports;
    {
        char* end = buffer.start;
        growing_buffer text(buffer.start, end);
        if (root != nullptr && rootcompl == 0) {
            end = write_tree(text, end, *root, reports);
        } else if (root != nullptr) {
            end = write_tree(text, std::copy_n("~(", 2, end), *root, reports);
            end = text.with_room(end, 1);
            *end++ = ')';
        }
        *end = '\0';
    }
    const kept_capacity kept;
    reports.send();
    if (std::strcmp(buffer.start, "~(0)") == 0) {
        std::copy_n("1", 2, buffer.start);
    }
    return std::exchange(buffer.start, nullptr);
}

void BOOL_FUNC::catvars(char* text)
{
    text += std::strlen(text);
    if (root == nullptr || nsuppt == 0) {
        std::copy_n(":", 2, text);
        return;
    }
    bool is_used[name_count] = {};
    visit_leaves(root, [&](const BOOL_TNODE& leaf) {
        if (is_named_leaf(leaf)) {
            is_used[leaf_name(leaf)] = true;
        }
    });
    for (int v = 0; v < name_count; ++v) {
        const char* name = name_text(v);
        if (is_used[v] && name != nullptr) {
            *text++ = ':';
            text = std::copy_n(name, std::strlen(name) + 1, text) - 1;
        }
    }
}
