#pragma once

#include <cstddef>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "platform/RunTimeError.h"

namespace quillform {

/// Ordered collection with positions from 1 to Count and optional text keys. Elements are shared, so that a reference a
/// reader holds stays good after Remove.
template <typename Element>
class KeyedCollection {
public:
    void ClearAll() { entries_.clear(); }
    int Count() const { return static_cast<int>(entries_.size()); }

    /// SubscriptOutOfRange for a position outside 1 to Count.
    Element& Item(int position) { return *At(position).element; }
    const Element& Item(int position) const { return *At(position).element; }
    /// InvalidProcedureCall for a key that nothing was added with.
    Element& Item(std::string_view key) { return *entries_[IndexOf(key)].element; }
    std::shared_ptr<Element> Share(int position) const { return At(position).element; }

    /// Appends; a key that isn't empty must be new.
    Element& Add(Element element, std::string key = {}) {
        if (!key.empty() && Has(key))
            throw RunTimeError(ErrorNumber::InvalidProcedureCall,
                               "The key \"" + key + "\" is taken in the collection.");
        entries_.push_back({std::make_shared<Element>(std::move(element)), std::move(key)});
        return *entries_.back().element;
    }
    void Remove(int position) {
        At(position);
        entries_.erase(entries_.begin() + position - 1);
    }
    void Remove(std::string_view key) { entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(IndexOf(key))); }

private:
    struct Entry {
        std::shared_ptr<Element> element;
        std::string key;
    };

    const Entry& At(int position) const {
        if (position < 1 || position > Count())
            throw RunTimeError(ErrorNumber::SubscriptOutOfRange,
                               "There is no item " + std::to_string(position) + " in the collection.");
        return entries_[static_cast<std::size_t>(position - 1)];
    }
    bool Has(std::string_view key) const {
        for (const Entry& entry : entries_)
            if (entry.key == key) return true;
        return false;
    }
    std::size_t IndexOf(std::string_view key) const {
        for (std::size_t i = 0; i < entries_.size(); ++i)
            if (!key.empty() && entries_[i].key == key) return i;
        throw RunTimeError(ErrorNumber::InvalidProcedureCall,
                           "There is no key \"" + std::string(key) + "\" in the collection.");
    }

    std::vector<Entry> entries_;

public:
    /// Walks the elements in position order.
    template <typename Base, typename Reference>
    class Walk {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = Element;
        using difference_type = std::ptrdiff_t;
        using pointer = std::remove_reference_t<Reference>*;
        using reference = Reference;

        Walk() = default;
        explicit Walk(Base base) : base_(base) {}
        Reference operator*() const { return *base_->element; }
        pointer operator->() const { return base_->element.get(); }
        Walk& operator++() {
            ++base_;
            return *this;
        }
        Walk operator++(int) {
            Walk before = *this;
            ++base_;
            return before;
        }
        bool operator==(const Walk& other) const { return base_ == other.base_; }

    private:
        Base base_{};
    };
    auto begin() { return Walk<typename std::vector<Entry>::iterator, Element&>(entries_.begin()); }
    auto end() { return Walk<typename std::vector<Entry>::iterator, Element&>(entries_.end()); }
    auto begin() const { return Walk<typename std::vector<Entry>::const_iterator, const Element&>(entries_.begin()); }
    auto end() const { return Walk<typename std::vector<Entry>::const_iterator, const Element&>(entries_.end()); }
};

}  // namespace quillform
