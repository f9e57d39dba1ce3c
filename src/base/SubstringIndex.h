#pragma once

#include <QStringView>

#include <vector>

namespace tavrel {

// A text that grows at its end and answers "does it contain this piece anywhere?" in time
// proportional to the piece, however long the text has become. Joining many distinct lines
// while skipping those already present would otherwise search the whole text once per line.
// Built as a suffix automaton: at most two states and three edges per character.
class SubstringIndex {
public:
    SubstringIndex();

    void append(QStringView text);
    bool contains(QStringView piece) const;

private:
    struct State {
        int length;
        int link;
        int firstEdge;
    };
    struct Edge {
        char16_t character;
        int target;
        int next;
    };

    int edgeIndex(int state, char16_t character) const;
    int target(int state, char16_t character) const;
    void addEdge(int state, char16_t character, int target);
    int addState(int length, int link);
    void extend(char16_t character);

    // The start state gains an edge for every character of the text and is met at the end of
    // nearly every walk, so its edges are a table rather than a list.
    std::vector<int> rootTargets_;
    std::vector<State> states_;
    std::vector<Edge> edges_;
    int last_ = 0;
};

} // namespace tavrel
