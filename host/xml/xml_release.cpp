#include "host/xml/xml_release.h"

#include <algorithm>

#include "host/xml/xml_holder.h"

namespace host::xml {

std::size_t Release::placeOf(const void* node) {
  return reinterpret_cast<std::uintptr_t>(node) % Slab::Bytes / sizeof(Node);
}

bool Release::isSet(const Places& places, std::size_t place) {
  return (places[place / 64] >> place % 64 & 1) != 0;
}

void Release::set(Places& places, std::size_t place) {
  places[place / 64] |= std::uint64_t(1) << place % 64;
}

// In document order; what is visited may be changed but for its place in the tree.
template <class Visit>
void Release::walk(Node& top, Visit visit) {
  Node* at = &top;
  for (;;) {
    visit(*at);
    if (at->first_ != nullptr) {
      at = at->first_;
      continue;
    }
    while (at != &top && at->next_ == nullptr) at = at->parent_;
    if (at == &top) return;
    at = at->next_;
  }
}

void Release::run() {
  free_.resize(storage_.slabs().size());
  used_.resize(storage_.slabs().size());
  for (const Slab* slab : storage_.slabs()) slabs_.emplace(slab, slab->number);
  noteFree();
  keep(root_);
  keepHeld();
  pool_ = std::make_shared<SharedPool>();
  for (Node* top : kept_) walk(*top, [this](const Node& node) { prepare(node); });
  attributes_.push_back(std::make_unique_for_overwrite<Attribute[]>(attributeCount_));
  nextAttribute_ = attributes_.front().get();
  prepareRuns();
  // From here on nothing fails.
  for (Node* top : kept_) walk(*top, [this](Node& node) { moveContent(node); });
  finish();
}

// A holder may name an address at which no element stands any longer.
void Release::noteFree() {
  for (const Storage::Run& run : storage_.runs()) noteFree(run);
  noteFree(storage_.openRun());
}

void Release::noteFree(const Storage::Run& run) {
  for (const char* at = run.begin; at != run.end; at += sizeof(Node))
    set(free_[Slab::of(at)->number], placeOf(at));
}

void Release::keep(Node& top) {
  kept_.push_back(&top);
  walk(top, [this](const Node& node) { set(usedOf(node), placeOf(&node)); });
}

void Release::keepHeld() {
  XmlHolder::tellAllHeld([this](const Node* held) { keepHolderOf(held); });
}

// The tree stays in which the element stands.
void Release::keepHolderOf(const Node* held) {
  const auto slab = slabs_.find(Slab::of(held));
  if (held == nullptr || slab == slabs_.end()) return;
  const std::size_t place = placeOf(held);
  const bool isElement = place > 0 && reinterpret_cast<std::uintptr_t>(held) % sizeof(Node) == 0;
  if (!isElement || isSet(free_[slab->second], place) || isSet(used_[slab->second], place)) return;
  Node* top = const_cast<Node*>(held);
  while (top->parent_ != nullptr) top = top->parent_;
  keep(*top);
}

void Release::prepare(const Node& node) {
  attributeCount_ += node.attributeCount_;
  prepare(node.text());
  if (NameTable::isOfDocuments(node.tag_)) pool_->hold(node.tag_);
  for (std::size_t i = 0; i < node.attributeCount_; ++i) {
    const Attribute& attribute = node.attributes_[i];
    prepare(attribute.text());
    if (NameTable::isOfDocuments(attribute.name)) pool_->hold(attribute.name);
  }
}

void Release::prepare(XmlText text) {
  if (text.empty()) return;
  const auto [place, isNew] = texts_.try_emplace(text.data());
  if (isNew) place->second = pool_->store(text);
}

XmlText Release::moved(XmlText text) const {
  return text.empty() ? XmlText() : texts_.find(text.data())->second;
}

void Release::moveContent(Node& node) {
  node.setStoredText(moved(node.text()));
  Attribute* const attributes = nextAttribute_;
  for (std::size_t i = 0; i < node.attributeCount_; ++i) {
    Attribute& attribute = *nextAttribute_++;
    attribute.name = node.attributes_[i].name;
    attribute.setText(moved(node.attributes_[i].text()));
  }
  node.attributes_ = attributes;
  node.attributeCapacity_ = node.attributeCount_;
}

// The free places of the slabs in which elements stay.
void Release::prepareRuns() {
  slabsLeft_.reserve(storage_.slabs().size());
  for (Slab* slab : storage_.slabs()) {
    const Places& used = used_[slab->number];
    if (std::all_of(used.begin(), used.end(), [](std::uint64_t word) { return word == 0; }))
      continue;
    slabsLeft_.push_back(slab);
    char* const begin = reinterpret_cast<char*>(slab);
    for (std::size_t place = 1; place < PlacesPerSlab;) {
      const std::size_t first = place;
      while (place < PlacesPerSlab && !isSet(used, place)) ++place;
      if (place > first)
        runs_.push_back({begin + first * sizeof(Node), begin + place * sizeof(Node)});
      else
        ++place;
    }
  }
}

void Release::finish() {
  storage_.replaceContent(std::move(pool_), std::move(attributes_), attributeCount_);
  storage_.replaceSlabs(std::move(slabsLeft_), std::move(runs_));
}

}  // namespace host::xml
