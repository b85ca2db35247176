#pragma once

#include "nurvex7/foundation/pipeline.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace nurvex7 {

/// Records by id: an ordered map from int to T for ids that come in runs.
///
/// Ids are process-wide, so the records of one graph may start at ten million, and break nodes
/// count downwards beside real nodes that count upwards. Records lie in pages of PAGE_SIZE
/// neighbouring ids; a small open-addressing table (Knuth, TAOCP vol. 3, 6.4) finds a page, and the
/// pages in id order serve the walks. Memory follows the number of pages in use, never the range
/// of the ids.
///
/// Order   walks go by ascending id
/// Keeps   references to records stay valid while records are added or others erased
/// Duty    nothing is added or erased while a walk runs
template <typename T>
class IdMap {
    // Large records often stand alone among the ids around them: their pages are short.
    static constexpr int PAGE_BITS = sizeof(T) > 64 ? 2 : 4;
    static constexpr int PAGE_SIZE = 1 << PAGE_BITS;
    static constexpr std::size_t SPARE_PAGES = 8; ///< empty pages that are kept for the next ids

    struct Page {
        explicit Page(std::int32_t n) : number(n) {}
        Page(const Page& other) : number(other.number) {
            for (int i = 0; i < PAGE_SIZE; ++i) {
                if ((other.used >> i) & 1U) {
                    std::construct_at(at(i), *other.at(i));
                    used |= 1U << i;
                }
            }
        }
        Page& operator=(const Page&) = delete;
        ~Page() {
            for (int i = 0; i < PAGE_SIZE; ++i) {
                if ((used >> i) & 1U) {
                    std::destroy_at(at(i));
                }
            }
        }

        bool holds(int i) const { return ((used >> i) & 1U) != 0; }
        T* at(int i) { return reinterpret_cast<T*>(memory.data()) + i; }
        const T* at(int i) const { return reinterpret_cast<const T*>(memory.data()) + i; }

        std::int32_t number;
        std::uint32_t used = 0;
        alignas(T) std::array<std::byte, sizeof(T) * PAGE_SIZE> memory;
    };

public:
    IdMap() = default;
    IdMap(const IdMap& other)
        : count(other.count), empty_pages(other.empty_pages), in_order(other.in_order) {
        pages.reserve(other.pages.size());
        for (const auto& page : other.pages) {
            pages.push_back(std::make_unique<Page>(*page));
        }
        rebuild_table();
    }
    IdMap(IdMap&& other) noexcept { swap(other); }
    IdMap& operator=(IdMap other) noexcept {
        swap(other);
        return *this;
    }
    ~IdMap() = default;

    void swap(IdMap& other) noexcept {
        pages.swap(other.pages);
        table.swap(other.table);
        std::swap(latest, other.latest);
        std::swap(count, other.count);
        std::swap(empty_pages, other.empty_pages);
        std::swap(in_order, other.in_order);
    }

    std::size_t size() const { return count; }
    bool empty() const { return count == 0; }
    std::size_t get_page_count() const { return pages.size(); }

    void clear() { IdMap().swap(*this); }
    /// The same for records that hold what lies all over the memory: the asks, `ask(record)`, ask
    /// for it, each for what the one before leads to.
    template <typename... Asks>
    void clear(Asks... asks) {
        IdMap gone;
        gone.swap(*this);
        std::vector<std::unique_ptr<Page>>& ending = gone.pages;
        const auto for_page = [&](auto& ask) {
            return [&](std::size_t i) {
                for (std::uint32_t left = ending[i]->used; left != 0; left &= left - 1) {
                    ask(*ending[i]->at(std::countr_zero(left)));
                }
            };
        };
        for_each_ahead(
            ending.size(), [&](std::size_t i) { ending[i].reset(); },
            [&](std::size_t i) { prefetch(ending[i].get(), sizeof(Page)); }, for_page(asks)...);
    }

    /// The record of an id, null where there is none.
    T* find(int id) {
        Page* const page = find_page(id >> PAGE_BITS);
        const int place = id & (PAGE_SIZE - 1);
        return page != nullptr && page->holds(place) ? page->at(place) : nullptr;
    }
    const T* find(int id) const { return const_cast<IdMap*>(this)->find(id); }

    // What a walk over many ids asks for before it looks one up: first where its page is found, a
    // little later the page.
    void ask_for_slot(int id) const {
        if (!table.empty()) {
            prefetch_line(&table[slot_of(id >> PAGE_BITS)]);
        }
    }
    void ask_for_page(int id) const {
        if (const Page* const page = find_page(id >> PAGE_BITS)) {
            prefetch_line(page);
            prefetch_line(page->at(id & (PAGE_SIZE - 1)));
        }
    }

    /// The record of an id, made from the arguments where there is none.
    template <typename... Args>
    T& find_or_make(int id, Args&&... args) {
        Page* page = find_page(id >> PAGE_BITS);
        if (page == nullptr) {
            page = add_page(id >> PAGE_BITS);
        } else if (page->used == 0) {
            --empty_pages;
        }
        const int place = id & (PAGE_SIZE - 1);
        if (!page->holds(place)) {
            std::construct_at(page->at(place), std::forward<Args>(args)...);
            page->used |= 1U << place;
            ++count;
        }
        return *page->at(place);
    }

    T& operator[](int id) { return find_or_make(id); }

    /// Drops the record of an id, if there is one. Gives whether there was.
    bool erase(int id) {
        Page* const page = find_page(id >> PAGE_BITS);
        const int place = id & (PAGE_SIZE - 1);
        if (page == nullptr || !page->holds(place)) {
            return false;
        }
        page->used &= ~(1U << place);
        --count;
        // What dies with a record may ask for the record of the same id: the slot is free by then.
        [[maybe_unused]] const T gone(std::move(*page->at(place)));
        std::destroy_at(page->at(place));
        if (page->used == 0 && ++empty_pages > pages.size() / 2 + SPARE_PAGES) {
            drop_empty_pages();
        }
        return true;
    }

    /// Drops every record for which `drop(id, record)` is true, and the pages that fall empty.
    template <typename F>
    void erase_if(F drop) {
        std::vector<T> gone; // dies when the map is whole again
        for (const auto& page : pages) {
            for (int i = 0; i < PAGE_SIZE; ++i) {
                if (page->holds(i) && drop(id_of(*page, i), *page->at(i))) {
                    page->used &= ~(1U << i);
                    --count;
                    gone.push_back(std::move(*page->at(i)));
                    std::destroy_at(page->at(i));
                }
            }
        }
        drop_empty_pages();
    }

    /// Calls `f(id, record)` for every record by ascending id.
    template <typename F>
    void for_each(F f) {
        sort_pages();
        for_each_unordered(f);
    }
    template <typename F>
    void for_each(F f) const {
        const_cast<IdMap*>(this)->for_each([&](int id, const T& record) { f(id, record); });
    }

    /// The same. Order: none, but that of neighbouring ids
    template <typename F>
    void for_each_unordered(F f) {
        for (const auto& page : pages) {
            for (std::uint32_t left = page->used; left != 0; left &= left - 1) {
                const int i = std::countr_zero(left);
                f(id_of(*page, i), *page->at(i));
            }
        }
    }

private:
    static int id_of(const Page& page, int place) { return (page.number << PAGE_BITS) | place; }

    std::size_t slot_of(std::int32_t number) const {
        const std::uint32_t mixed = static_cast<std::uint32_t>(number) * 0x9E3779B1U;
        return (mixed ^ (mixed >> 15)) & (table.size() - 1);
    }

    // Walks ask for neighbouring ids, one after the other: most find the page of the last call.
    Page* find_page(std::int32_t number) const {
        if (latest.page != nullptr && latest.number == number) {
            return latest.page;
        }
        if (table.empty()) {
            return nullptr;
        }
        for (std::size_t slot = slot_of(number);; slot = (slot + 1) & (table.size() - 1)) {
            if (table[slot].page == nullptr) {
                return nullptr;
            }
            if (table[slot].number == number) {
                latest = table[slot];
                return latest.page;
            }
        }
    }

    Page* add_page(std::int32_t number) {
        in_order = in_order && (pages.empty() || pages.back()->number < number);
        pages.push_back(std::make_unique<Page>(number));
        if (pages.size() * 2 > table.size()) {
            rebuild_table();
        } else {
            enter(pages.back().get());
        }
        return pages.back().get();
    }

    void enter(Page* page) {
        std::size_t slot = slot_of(page->number);
        while (table[slot].page != nullptr) {
            slot = (slot + 1) & (table.size() - 1);
        }
        table[slot] = {page->number, page};
    }

    void drop_empty_pages() {
        std::erase_if(pages, [](const auto& page) { return page->used == 0; });
        empty_pages = 0;
        latest = Slot();
        rebuild_table();
    }

    void rebuild_table() {
        table.assign(pages.empty() ? 0 : std::bit_ceil(pages.size() * 4), Slot());
        for (const auto& page : pages) {
            enter(page.get());
        }
    }

    void sort_pages() {
        if (!in_order) {
            std::sort(pages.begin(), pages.end(),
                      [](const auto& a, const auto& b) { return a->number < b->number; });
            in_order = true;
        }
    }

    struct Slot {
        std::int32_t number = 0;
        Page* page = nullptr;
    };

    std::vector<std::unique_ptr<Page>> pages;
    std::vector<Slot> table;
    mutable Slot latest; ///< the page that was found last
    std::size_t count = 0;
    std::size_t empty_pages = 0; ///< pages that a removal has left empty
    bool in_order = true;        ///< pages stand by ascending number
};

} // namespace nurvex7
