#include "apps/nurvex/graph_file.h"

#include "apps/nurvex/failure.h"
#include "nurvex7/model/text_graph.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <iostream>
#include <istream>
#include <streambuf>
#include <sys/stat.h>
#include <unistd.h>

namespace nurvex {

using nurvex7::Graph;
using nurvex7::graph_ptr2;

namespace {

constexpr const char* STANDARD_INPUT = "-";
constexpr std::size_t PIECE = 1 << 16;
constexpr std::size_t LARGEST = std::size_t{1} << 31; ///< bytes: many times what can be drawn

/// A file that is open for reading.
class Descriptor {
public:
    explicit Descriptor(const std::string& name)
        : number(open(name.c_str(), O_RDONLY | O_CLOEXEC)) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number >= 0) {
            close(number);
        }
    }

    const int number; ///< below zero where the file cannot be opened
};

[[noreturn]] void fail_to_read(const std::string& name, int error, const std::string& advice) {
    throw Failure(EXIT_FILES, name + ": cannot be read: " + std::strerror(error) + "; " + advice);
}

/// The next piece of a file, at its end. False where there is none.
bool read_piece(const std::string& name, int from, std::string& content) {
    const std::size_t before = content.size();
    content.resize(before + PIECE);
    ssize_t size = -1;
    do {
        size = read(from, content.data() + before, PIECE);
    } while (size < 0 && errno == EINTR);
    if (size < 0) {
        const int error = errno;
        fail_to_read(name, error,
                     before > 0 ? std::to_string(before) +
                                      " bytes of it came, the rest is missing; try again, or take "
                                      "another copy"
                                : "name a file that holds a text graph");
    }
    content.resize(before + static_cast<std::size_t>(size));
    return size > 0;
}

bool goes_on(const std::string& name, int from, std::string& content) {
    const std::size_t before = content.size();
    if (!read_piece(name, from, content)) {
        return false;
    }
    if (content.size() > LARGEST - PIECE) {
        throw Failure(EXIT_FILES, name + ": is larger than two gigabytes, or never ends; name a "
                                         "smaller graph");
    }
    // What stands behind a NUL byte is not checked: some devices give them for ever.
    return content.find('\0', before) == std::string::npos;
}

// A stream would not do: what its buffer meets on the way, it gives out as the end of the file.
std::string read_all(const std::string& name, int from) {
    std::string content;
    struct stat about {};
    if (fstat(from, &about) == 0 && S_ISREG(about.st_mode)) {
        content.reserve(std::min(static_cast<std::size_t>(about.st_size) + PIECE, LARGEST));
    }
    while (goes_on(name, from, content)) {
    }
    return content;
}

std::string read_file(const std::string& name) {
    std::error_code ignored;
    if (std::filesystem::is_directory(name, ignored)) {
        throw Failure(EXIT_FILES, name + ": is a directory; name a text graph in it");
    }
    const Descriptor file(name);
    if (file.number < 0) {
        fail_to_read(name, errno, "check the name and the permissions");
    }
    return read_all(name, file.number);
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
      content(given_name == STANDARD_INPUT ? read_all(name, STDIN_FILENO) : read_file(given_name)) {
}

std::vector<Fault> GraphFile::find_faults(GraphSize* size, const Progress& progress) const {
    TextSource source(content, progress);
    std::istream in(&source);
    in.exceptions(std::ios::badbit); // so that what `progress` throws comes through
    return check_text_graph(in, size);
}

GraphSize GraphFile::Check(const std::function<void()>& before_telling) const {
    GraphSize size;
    const std::vector<Fault> faults = find_faults(&size, {});
    if (!faults.empty() && before_telling) {
        before_telling();
    }
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
