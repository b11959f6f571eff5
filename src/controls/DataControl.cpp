#include "controls/DataControl.h"

#include <algorithm>

namespace tq7 {

void DataControl::Reposition() {
  // A handler may unbind while the event runs: walk a copy.
  const auto handlers = handlers_;
  for (const auto& h : handlers) h.second();
}

int DataControl::addRepositionHandler(std::function<void()> handler) {
  handlers_.emplace_back(nextId_, std::move(handler));
  return nextId_++;
}

void DataControl::removeRepositionHandler(int id) {
  handlers_.erase(std::remove_if(handlers_.begin(), handlers_.end(), [id](const auto& h) { return h.first == id; }),
                  handlers_.end());
}

}  // namespace tq7
