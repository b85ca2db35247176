#include "nurvex7/model/topology.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

// Random changes of a graph, against the plain form of its steps: recursive, on vectors.
namespace {

using namespace nurvex7;

struct plain_node;
struct plain_edge;

template <typename T>
struct plain_set {
    std::vector<T*> items;
    bool sorted = false;

    void append(T* item) {
        items.push_back(item);
        sorted = false;
    }
    void erase_found(T* x) {
        if (items.empty()) {
            return;
        }
        const auto by_id = [](const T* a, const T* b) { return a->id < b->id; };
        if (!sorted) {
            std::sort(items.begin(), items.end(), by_id);
            sorted = true;
        }
        const auto found = std::lower_bound(items.begin(), items.end(), x, by_id);
        items.erase(found != items.end() ? found : items.end() - 1);
    }
};

struct plain_edge {
    int id;
    plain_node* from;
    plain_node* to;

    void remove();
};

struct plain_node {
    int id;
    plain_node* owner;
    plain_set<plain_node> owned{};
    plain_set<plain_edge> out{};
    plain_set<plain_edge> in{};
    std::vector<plain_node*> parents{};
    std::vector<plain_node*> children{};

    std::vector<plain_node*> neighbours(const plain_set<plain_edge>& edges,
                                        plain_node* plain_edge::*end,
                                        std::vector<plain_node*>& cache) const {
        if (cache.empty()) {
            for (const plain_edge* edge : edges.items) {
                cache.push_back(edge->*end);
            }
            std::sort(cache.begin(), cache.end(),
                      [](const plain_node* a, const plain_node* b) { return a->id < b->id; });
            cache.erase(std::unique(cache.begin(), cache.end()), cache.end());
        }
        return cache;
    }
    void set_owner(plain_node* new_owner) {
        for (plain_node* p = new_owner; p->id != 0;) {
            plain_node* const above = p->owner;
            if (above == nullptr || above == p || above == this) {
                return;
            }
            p = above;
        }
        owner->owned.erase_found(this);
        owner = new_owner;
        new_owner->owned.append(this);
    }
    void remove_edge(plain_edge* e) {
        out.erase_found(e);
        children.clear();
        e->to->in.erase_found(e);
        e->to->parents.clear();
    }
    static void delete_edge_from(plain_edge* e) {
        e->from->out.erase_found(e);
        e->from->children.clear();
        e->remove();
    }
    void delete_owned() {
        while (!owned.items.empty()) {
            plain_node* const first = owned.items[0];
            owned.erase_found(first);
            first->delete_node();
        }
    }
    void delete_node() {
        delete_owned();
        while (!in.items.empty()) {
            plain_edge* const first = in.items[0];
            in.erase_found(first);
            delete_edge_from(first);
        }
        owner = nullptr;
        owned.items.clear();
        out.items.clear();
        in.items.clear();
        parents.clear();
        children.clear();
    }
};

void plain_edge::remove() {
    from->remove_edge(this);
    from = nullptr;
    to = nullptr;
}

// Both forms side by side, by index: 0 is the root.
struct twins {
    explicit twins(unsigned seed) : random(seed) {
        plain_nodes.push_back(new plain_node{0, nullptr});
        real_nodes.push_back(new DefaultRootNodeImpl);
    }
    twins(const twins&) = delete;
    twins& operator=(const twins&) = delete;
    ~twins() {
        for (std::size_t i = 1; i < real_nodes.size(); ++i) {
            if (real_nodes[i]->get_owner().get() == real_nodes[i].get()) {
                real_nodes[i]->remove(); // no root knows it
            }
        }
        real_nodes[0]->remove();
        for (const plain_node* node : plain_nodes) {
            delete node;
        }
        for (const plain_edge* edge : plain_edges) {
            delete edge;
        }
    }

    std::size_t below(std::size_t bound) { return random() % bound; }
    bool is_left(std::size_t i) const { return i == 0 || plain_nodes[i]->owner != nullptr; }

    void add_node(std::size_t owner) {
        real_nodes.push_back(real_nodes[owner]->add_node());
        plain_nodes.push_back(new plain_node{real_nodes.back()->get_id(), plain_nodes[owner]});
        plain_nodes[owner]->owned.append(plain_nodes.back());
    }
    void link(std::size_t from, std::size_t to) {
        real_edges.push_back(real_nodes[from]->link_to(real_nodes[to]));
        plain_edges.push_back(
            new plain_edge{real_edges.back()->get_id(), plain_nodes[from], plain_nodes[to]});
        plain_nodes[from]->out.append(plain_edges.back());
        plain_nodes[from]->children.clear();
        plain_nodes[to]->in.append(plain_edges.back());
        plain_nodes[to]->parents.clear();
    }
    void remove_node(std::size_t i) {
        real_nodes[i]->remove();
        if (i == 0) {
            plain_nodes[0]->delete_owned();
        } else {
            plain_nodes[i]->owner->owned.erase_found(plain_nodes[i]);
            plain_nodes[i]->delete_node();
        }
    }
    void step(bool root_may_go) {
        const std::size_t a = below(real_nodes.size());
        const std::size_t b = below(real_nodes.size());
        const std::size_t kind = below(100);
        if (kind < 10 && !real_edges.empty()) {
            const std::size_t e = below(real_edges.size());
            if (plain_edges[e]->from != nullptr) {
                real_edges[e]->remove();
                plain_edges[e]->remove();
            }
        } else if (kind >= 92) {
            compare_neighbours(a); // of removed nodes too
        } else if (!is_left(a) || !is_left(b)) {
            return;
        } else if (kind < 30) {
            add_node(a);
        } else if (kind < 75) {
            if (a != 0 && b != 0) {
                link(a, b);
            }
        } else if (kind < 85) {
            if (a != 0) {
                real_nodes[a]->set_owner(real_nodes[b]);
                plain_nodes[a]->set_owner(plain_nodes[b]);
            }
        } else if (a != 0 || (root_may_go && below(20) == 0)) {
            remove_node(a);
        }
    }
    void compare_neighbours(std::size_t i) {
        plain_node& p = *plain_nodes[i];
        EXPECT_EQ(ids(real_nodes[i]->get_children()),
                  ids(p.neighbours(p.out, &plain_edge::to, p.children)));
        EXPECT_EQ(ids(real_nodes[i]->get_parents()),
                  ids(p.neighbours(p.in, &plain_edge::from, p.parents)));
    }

    template <typename Set>
    static std::string ids(const graph_ptr<Set>& set) {
        std::string text;
        for (int i = 0; i < set->GetCount(); ++i) {
            text += std::to_string(set->GetItem(i)->get_id()) + " ";
        }
        return text;
    }
    template <typename T>
    static std::string ids(const std::vector<T*>& items) {
        std::string text;
        for (const T* item : items) {
            text += std::to_string(item->id) + " ";
        }
        return text;
    }
    static std::string id(const graph_ptr<INodeImpl>& node) {
        return node.get() != nullptr ? std::to_string(node->get_id()) : "none";
    }
    static std::string id(const plain_node* node) {
        return node != nullptr ? std::to_string(node->id) : "none";
    }

    // Everything that a kept handle can tell.
    std::string real_text() {
        std::string text;
        for (const auto& node : real_nodes) {
            text += id(node) + " in " + id(node->get_owner()) + " owns " + ids(node->get_owned()) +
                    "out " + ids(node->get_edges_out()) + "in " + ids(node->get_edges_in()) + "\n";
        }
        for (const auto& edge : real_edges) {
            text += id(edge->from()) + ">" + id(edge->to()) + "\n";
        }
        return text;
    }
    std::string plain_text() const {
        std::string text;
        for (const plain_node* node : plain_nodes) {
            text += id(node) + " in " + id(node->owner) + " owns " + ids(node->owned.items) +
                    "out " + ids(node->out.items) + "in " + ids(node->in.items) + "\n";
        }
        for (const plain_edge* edge : plain_edges) {
            text += id(edge->from) + ">" + id(edge->to) + "\n";
        }
        return text;
    }

    std::mt19937 random;
    std::vector<plain_node*> plain_nodes;
    std::vector<plain_edge*> plain_edges;
    std::vector<graph_ptr<INodeImpl>> real_nodes;
    std::vector<graph_ptr<IEdgeImpl>> real_edges;
};

TEST(TopologyAgainstTheSteps, KeptHandlesTellTheSameAfterEveryChange) {
    for (unsigned seed = 1; seed <= 100; ++seed) {
        SCOPED_TRACE(seed);
        twins both(seed);
        for (int i = 0; i < 250; ++i) {
            both.step(/*root_may_go=*/true);
            ASSERT_EQ(both.real_text(), both.plain_text());
        }
    }
}

TEST(TopologyAgainstTheSteps, HubsAndRowsComeApartAlike) {
    for (unsigned seed = 1; seed <= 3; ++seed) {
        SCOPED_TRACE(seed);
        twins both(seed);
        for (std::size_t i = 0; i < 1500; ++i) {
            both.add_node(i > 0 && both.below(3) == 0 ? 1 + both.below(5) % i : 0);
        }
        for (int i = 0; i < 4000; ++i) {
            const std::size_t hub = 1 + both.below(3);
            const std::size_t other = 1 + both.below(1500);
            both.below(2) == 0 ? both.link(hub, other) : both.link(other, hub);
        }
        for (int round = 0; round < 15; ++round) {
            for (int i = 0; i < 50; ++i) {
                const std::size_t node = 1 + both.below(1500);
                if (both.is_left(node)) {
                    both.remove_node(node);
                }
            }
            ASSERT_EQ(both.real_text(), both.plain_text());
        }
        both.remove_node(0);
        ASSERT_EQ(both.real_text(), both.plain_text());
    }
}

} // namespace
