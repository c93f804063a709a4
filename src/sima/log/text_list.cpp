// A growing list of texts.
#include "sima/log/text_list.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <stdexcept>
#include <vector>

namespace fenmark::sima {

namespace {

constexpr std::size_t kFirstBlock = std::size_t{4} << 10;
constexpr std::size_t kLargestBlock = std::size_t{1} << 20;

} // namespace

struct TextList::Store {
    std::vector<std::unique_ptr<char[]>> blocks;
    std::size_t blockSize = 0; // of the last block
    std::size_t used = 0;      // of the last block
    std::deque<std::string_view> texts;

    // Room for a text, in the last block or in a new one.
    char* room(std::size_t size) {
        if (size > blockSize - used) {
            blockSize = std::max(size, std::clamp(2 * blockSize, kFirstBlock, kLargestBlock));
            blocks.emplace_back(new char[blockSize]);
            used = 0;
        }
        char* place = blocks.empty() ? nullptr : blocks.back().get() + used;
        used += size;
        return place;
    }
};

std::string_view TextList::operator[](std::size_t index) const {
    if (index >= count_) {
        throw std::invalid_argument("text index out of range");
    }
    return store_->texts[index];
}

TextList::Store& TextList::ownStore() {
    if (store_ && count_ != store_->texts.size()) {
        TextList own;
        for (std::size_t i = 0; i < count_; ++i) {
            own.append((*this)[i]);
        }
        *this = std::move(own);
    }
    if (!store_) {
        store_ = std::make_shared<Store>();
    }
    return *store_;
}

void TextList::append(std::initializer_list<std::string_view> pieces) {
    Store& store = ownStore();
    std::size_t size = 0;
    for (const std::string_view piece : pieces) {
        size += piece.size();
    }
    char* const start = store.room(size);
    char* end = start;
    for (const std::string_view piece : pieces) {
        end = std::copy(piece.begin(), piece.end(), end);
    }
    store.texts.emplace_back(start, size);
    ++count_;
}

void TextList::appendLiteral(std::string_view text) {
    ownStore().texts.push_back(text);
    ++count_;
}

void TextList::clear() {
    store_.reset();
    count_ = 0;
}

} // namespace fenmark::sima
