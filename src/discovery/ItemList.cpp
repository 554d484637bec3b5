#include "discovery/ItemList.h"

#include <algorithm>
#include <string>

#include "vb/vb.h"

namespace tessmark::discovery {

namespace {
constexpr int kInvalidPropertyValue = 380;
constexpr int kIndexOutOfBounds = 35600;
}  // namespace

long TagNumber(const RowTag& tag) {
    if (const long* number = std::get_if<long>(&tag)) return *number;
    if (const std::string* text = std::get_if<std::string>(&tag)) {
        std::string trimmed = vb::Trim(*text);
        if (trimmed.empty()) throw vb::VbError(vb::err::kTypeMismatch);
        std::size_t used = 0;
        long value = 0;
        try {
            value = std::stol(trimmed, &used);
        } catch (...) {
            throw vb::VbError(vb::err::kTypeMismatch);
        }
        if (used != trimmed.size()) throw vb::VbError(vb::err::kTypeMismatch);
        return value;
    }
    return 0;  // an empty Tag compares as 0
}

std::string& ItemRow::SubItems(int index) {
    if (index < 1 || index > 3) throw vb::VbError(kInvalidPropertyValue);
    return subItems_[index - 1];
}

const std::string& ItemRow::SubItems(int index) const {
    if (index < 1 || index > 3) throw vb::VbError(kInvalidPropertyValue);
    return subItems_[index - 1];
}

const IconImage& ImageStore::operator[](long index) const {
    if (index < 1 || index > Count()) throw vb::VbError(kIndexOutOfBounds);
    return images_[static_cast<std::size_t>(index - 1)];
}

ItemRow& ItemList::operator()(long index) {
    if (index < 1 || index > Count()) throw vb::VbError(kIndexOutOfBounds);
    return *rows_[static_cast<std::size_t>(index - 1)];
}

ItemRow& ItemList::Add() {
    rows_.push_back(std::make_unique<ItemRow>());
    return *rows_.back();
}

void ItemList::Clear() {
    rows_.clear();
    selected_ = nullptr;
}

ItemRow& ItemList::SelectedItem() {
    if (selected_ == nullptr) throw vb::VbError(vb::err::kObjectNotSet);
    return *selected_;
}

void ItemList::Select(ItemRow& row) {
    if (selected_ != nullptr) selected_->Selected = false;
    selected_ = &row;
    row.Selected = true;
}

long ItemList::IndexOf(const ItemRow& row) const {
    for (std::size_t i = 0; i < rows_.size(); ++i)
        if (rows_[i].get() == &row) return static_cast<long>(i) + 1;
    return 0;
}

void ItemList::Sort() {
    auto column = [this](const std::unique_ptr<ItemRow>& row) {
        return vb::LCase(SortKey == 0 ? row->Text : row->SubItems(static_cast<int>(SortKey)));
    };
    std::stable_sort(rows_.begin(), rows_.end(), [&](const auto& a, const auto& b) {
        return SortOrder == 0 ? column(a) < column(b) : column(b) < column(a);
    });
}

}  // namespace tessmark::discovery
