#pragma once

namespace hearthmake::posix {

// Things in the order in which they were added, linked by their own members `previous` and `next`: adding and
// removing costs the same however many there are, and takes no memory.
template <class Link>
struct Chain {
  Link* first = nullptr;
  Link* last = nullptr;

  void Add(Link& link) {
    link.previous = last;
    (last == nullptr ? first : last->next) = &link;
    last = &link;
  }

  // It must be one of them.
  void Remove(const Link& link) {
    (link.previous == nullptr ? first : link.previous->next) = link.next;
    (link.next == nullptr ? last : link.next->previous) = link.previous;
  }
};

}  // namespace hearthmake::posix
