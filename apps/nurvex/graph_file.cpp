#include "apps/nurvex/graph_file.h"

#include "apps/nurvex/failure.h"
#include "nurvex7/model/text_graph.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <streambuf>

namespace nurvex {

using nurvex7::Graph;
using nurvex7::graph_ptr2;

namespace {

constexpr const char* STANDARD_INPUT = "-";

std::string read_all(std::istream& in) {
    std::ostringstream content;
    content << in.rdbuf();
    return std::move(content).str();
}

std::string read_file(const std::string& name) {
    std::error_code ignored;
    if (std::filesystem::is_directory(name, ignored)) {
        throw Failure(EXIT_FILES, name + ": is a directory; name a text graph in it");
    }
    errno = 0;
    std::ifstream in(name, std::ios::binary);
    std::string content = in ? read_all(in) : std::string();
    if (!in) {
        const std::string reason = errno != 0 ? std::strerror(errno) : "read error";
        throw Failure(EXIT_FILES, name + ": cannot be read: " + reason +
                                      "; check the name and the permissions");
    }
    return content;
}

/// Lets a stream read a text where it stands, since graphs can be large and a string stream copies.
/// The text comes piece by piece, and it is told how far.
class TextSource final : public std::streambuf {
public:
    TextSource(const std::string& whole, const GraphFile::Progress& told)
        : text(whole), progress(told) {}

protected:
    int_type underflow() override {
        if (progress && !text.empty()) {
            progress(static_cast<double>(read) / static_cast<double>(text.size()));
        }
        if (read == text.size()) {
            return traits_type::eof();
        }
        constexpr std::size_t piece = 1 << 15;
        const std::size_t size = std::min(piece, text.size() - read);
        // The buffer is only read from, but its pointers are to what could be written.
        char* const begin = const_cast<char*>(text.data()) + read;
        setg(begin, begin, begin + size);
        read += size;
        return traits_type::to_int_type(*begin);
    }

private:
    const std::string& text;
    const GraphFile::Progress& progress;
    std::size_t read = 0;
};

} // namespace

GraphFile::GraphFile(const std::string& given_name)
    : name(given_name == STANDARD_INPUT ? "standard input" : given_name),
      content(given_name == STANDARD_INPUT ? read_all(std::cin) : read_file(given_name)) {}

std::vector<Fault> GraphFile::find_faults(GraphSize* size, const Progress& progress) const {
    TextSource source(content, progress);
    std::istream in(&source);
    in.exceptions(std::ios::badbit); // so that what `progress` throws comes through
    return check_text_graph(in, size);
}

GraphSize GraphFile::Check() const {
    GraphSize size;
    const std::vector<Fault> faults = find_faults(&size, {});
    for (const auto& fault : faults) {
        std::cerr << name << ':' << fault.line << ": " << fault.message << '\n';
    }
    if (!faults.empty()) {
        throw Failure(EXIT_INPUT, name + ": is no sound text graph; mend the lines told above");
    }
    return size;
}

graph_ptr2<Graph> GraphFile::Load(const Progress& progress) const {
    const graph_ptr2<Graph> graph(new Graph, /*owns=*/true);
    TextSource source(content, progress);
    std::istream in(&source);
    in.exceptions(std::ios::badbit);
    if (nurvex7::Load(graph, in) == 0) {
        throw Failure(EXIT_INPUT, name + ": an edge or an owner names a node that is not there");
    }
    return graph;
}

std::string GraphFile::GetTitle() const {
    return std::filesystem::path(name).stem().string();
}

} // namespace nurvex
