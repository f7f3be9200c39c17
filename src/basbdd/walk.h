/// @file
/// @brief The walk that if-then-else, compose and the conversion have in common.
#pragma once

class BDD_NODE;

namespace basbdd {

/// @brief What is known of a problem.
struct solution {
    bool known;
    BDD_NODE* edge; ///< the result if known, null when there is none
};

/// @brief Solves a problem by its two parts, the first before the second, with an explicit stack
/// in place of recursion.
///
/// An operation has
/// - `settle(problem)`: the solution, or none yet; then the problem's frame is on top of `open`;
/// - `first(frame)`, `second(frame)`: the problems of the two parts;
/// - `join(frame, edge)`: the result, from that of the second part and the frame;
/// - `open`: the stack of the frames, which have `keep_first(edge)` and `first_is_known()`;
/// - `null_ends_all`: whether nothing else is of interest once a part has no result.
template <typename operation, typename problem>
BDD_NODE* solve(operation& op, problem next)
{
    for (;;) {
        solution found = op.settle(next);
        if (!found.known) {
            next = op.first(op.open.top());
            continue;
        }
        for (;;) {
            if (operation::null_ends_all && found.edge == nullptr) {
                op.open.clear();
            }
            if (op.open.empty()) {
                return found.edge;
            }
            auto& waiting = op.open.top();
            if (!waiting.first_is_known()) {
                waiting.keep_first(found.edge);
                next = op.second(waiting);
                break;
            }
            found.edge = op.join(waiting, found.edge);
            op.open.pop();
        }
    }
}

} // namespace basbdd
