#include "base/SubstringIndex.h"

namespace tavrel {

SubstringIndex::SubstringIndex()
    : rootTargets_(std::size_t(0x10000), -1) {
    addState(0, -1);
}

void SubstringIndex::append(QStringView text) {
    for (const QChar character : text)
        extend(character.unicode());
}

bool SubstringIndex::contains(QStringView piece) const {
    int state = 0;
    for (const QChar character : piece) {
        state = target(state, character.unicode());
        if (state < 0)
            return false;
    }
    return true;
}

int SubstringIndex::edgeIndex(int state, char16_t character) const {
    for (int edge = states_[std::size_t(state)].firstEdge; edge >= 0;
         edge = edges_[std::size_t(edge)].next) {
        if (edges_[std::size_t(edge)].character == character)
            return edge;
    }
    return -1;
}

int SubstringIndex::target(int state, char16_t character) const {
    if (state == 0)
        return rootTargets_[character];
    const int edge = edgeIndex(state, character);
    return edge < 0 ? -1 : edges_[std::size_t(edge)].target;
}

void SubstringIndex::addEdge(int state, char16_t character, int target) {
    if (state == 0) {
        rootTargets_[character] = target;
        return;
    }
    State &from = states_[std::size_t(state)];
    edges_.push_back({character, target, from.firstEdge});
    from.firstEdge = int(edges_.size()) - 1;
}

int SubstringIndex::addState(int length, int link) {
    states_.push_back({length, link, -1});
    return int(states_.size()) - 1;
}

void SubstringIndex::extend(char16_t character) {
    const int current = addState(states_[std::size_t(last_)].length + 1, 0);
    int state = last_;
    int next = -1;
    while (state >= 0) {
        next = target(state, character);
        if (next >= 0)
            break;
        addEdge(state, character, current);
        state = states_[std::size_t(state)].link;
    }
    last_ = current;
    if (state < 0)
        return;
    if (states_[std::size_t(state)].length + 1 == states_[std::size_t(next)].length) {
        states_[std::size_t(current)].link = next;
        return;
    }
    // The state reached also stands for longer texts that do not end here: split off a copy
    // that holds only the shorter ones.
    const int clone =
        addState(states_[std::size_t(state)].length + 1, states_[std::size_t(next)].link);
    for (int edge = states_[std::size_t(next)].firstEdge; edge >= 0;
         edge = edges_[std::size_t(edge)].next) {
        const Edge copied = edges_[std::size_t(edge)];
        addEdge(clone, copied.character, copied.target);
    }
    // Every state on this suffix path has an edge for the character; one look each.
    while (state >= 0) {
        int &edgeTarget = state == 0 ? rootTargets_[character]
                                     : edges_[std::size_t(edgeIndex(state, character))].target;
        if (edgeTarget != next)
            break;
        edgeTarget = clone;
        state = states_[std::size_t(state)].link;
    }
    states_[std::size_t(next)].link = clone;
    states_[std::size_t(current)].link = clone;
}

} // namespace tavrel
