#include "apps/nurvex/graph_check.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace nurvex {
namespace {

std::vector<Fault> faults_of(const std::string& text) {
    std::istringstream in(text);
    return check_text_graph(in);
}

std::string text_of(const std::vector<Fault>& faults) {
    std::string text;
    for (const Fault& fault : faults) {
        text += std::to_string(fault.line) + ": " + fault.message + "\n";
    }
    return text;
}

std::string with_nodes(const std::string& rest) {
    return "t\n[nodes]\n1 \"a\" 0 0\n2 \"b\" 0 0\n" + rest; // from line 5 on
}

std::string with_edges(const std::string& rest) {
    return with_nodes("[edges]\n" + rest); // from line 6 on
}

std::string with_thread(const std::string& edges) {
    return "t\n[nodes]\n1 \"my Thread\" 0 0\n2 \"main\" 0 0\n3 \"xmain\" 0 0\n[edges]\n" + edges;
}

TEST(GraphCheck, NamesTheLinesAtFault) {
    struct {
        const char* shows;
        std::string text;
        std::string faults; ///< line and words of the message, parted by bars
    } const cases[] = {
        {"an empty file", "", "1 the file is empty"},
        {"nodes, edges and types",
         with_nodes("[types]\nanything x] \"\n[edges]\n1 2 \"e\"\n2 2 \"\" more\n"), ""},
        {"owners in any order", "t\n[clusters]\n1 \"a\" -7 2\n\n[nodes]\n2 \"C\" 0 0\n", ""},
        {"signs, tabs, quotes inside, no newline at the end",
         "t\n[nodes]\n+1\t\"a \"quoted\" b\"-5 +0 ignored\n  \n007 \"\" 0 1", ""},
        {"an edge without a caption", with_edges("1 2"), ""},
        {"a Thread whose path of main nodes ends",
         with_thread("1 3 \"\"\n1 2 \"\"\n3 1 \"\"\n3 3 \"\"\n"), ""},
        {"a loop of main nodes without a Thread", "t\n[nodes]\n1 \"main\" 0 0\n[edges]\n1 1 \"\"\n",
         ""},
        // Nodes.
        {"no id", with_nodes("\"c\" 0 0\n"), "5 without an id"},
        {"an id that stands for none", with_nodes("-1 \"c\" 0 0\n"), "5 -1"},
        {"no quotes", with_nodes("3 0 0\n"), "5 without a caption"},
        {"one quote", with_nodes("3 \"c 0 0\n"), "5 only one double quote"},
        {"no numbers", with_nodes("3 \"c\"\n"), "5 fewer than two numbers"},
        {"one number", with_nodes("3 \"c\" 0\n"), "5 fewer than two numbers"},
        {"a malformed id", with_nodes("x3 \"c\" 0 0\n"), "5 \"x3\", which is no whole"},
        {"letters behind the id do not hide the node", with_nodes("3x \"c\" 0 0\n4 \"d\" 0 3\n"),
         "5 \"3x\""},
        {"a malformed type", with_nodes("3 \"c\" 1.5 0\n"), "5 the type"},
        {"a malformed owner", with_nodes("3 \"c\" 0 1,\n"), "5 the owner"},
        {"numbers that do not fit", with_nodes("3 \"c\" 2147483648 -2147483649\n"),
         "5 the type|5 the owner"},
        {"control letters are not passed on", with_nodes("\x1b[2J \"c\" 0 0\n"), "5 \"?[2J\""},
        {"an id twice", with_nodes("1 \"c\" 0 2\n"), "5 the id 1 is taken by the node of line 3"},
        // Owners.
        {"unknown", with_nodes("3 \"c\" 0 9\n4 \"d\" 0 0\n"),
         "5 the owner of node 3 is node 9, which no line defines"},
        {"itself", with_nodes("3 \"c\" 0 3\n"), "5 node 3 is its own owner"},
        {"in a circle, with a node that hangs on it",
         "t\n[nodes]\n4 \"d\" 0 1\n1 \"a\" 0 2\n2 \"b\" 0 3\n3 \"c\" 0 1\n",
         "4 node 1 is inside itself"},
        {"in two circles", "t\n[nodes]\n1 \"a\" 0 2\n2 \"b\" 0 1\n3 \"c\" 0 4\n4 \"d\" 0 3\n",
         "3 over 1 other node;|5 node 3"},
        // Edges.
        {"an end that nobody defines", with_edges("1 2 \"\"\n1 99 \"\"\n"),
         "7 edge ends at node 99, which no line above defines; add the node or correct the number"},
        {"a node that comes later", with_edges("3 1 \"\"\n[nodes]\n3 \"c\" 0 0\n"),
         "6 edge starts at node 3, which no line above defines, only line 8 below"},
        {"both ends at once", with_edges("8 9 \"\"\n"), "6 starts at node 8|6 ends at node 9"},
        {"no numbers", with_edges("\"c\"\n"), "6 fewer than two numbers"},
        {"one number", with_edges("1 \"2\"\n"), "6 fewer than two numbers"},
        {"malformed and too large", with_edges("1- 99999999999 \"\"\n"),
         "6 the source|6 the target"},
        {"one quote", with_edges("1 2 \"\n"), "6 only one double quote"},
        {"from -1", with_edges("-1 2 \"\"\n"), "6 starts at node -1"},
        // Paths of a Thread.
        {"a path that comes back", with_thread("1 3 \"\"\n3 2 \"\"\n2 3 \"\"\n"),
         "4 comes back to node 2 after 2 edges"},
        {"a main node with an edge to itself", with_thread("1 2 \"\"\n2 2 \"\"\n"),
         "4 after 1 edge "},
        {"the first main child by line decides, not by id",
         "t\n[nodes]\n1 \"Thread\" 0 0\n9 \"main\" 0 0\n2 \"main\" 0 0\n[edges]\n"
         "1 2 \"\"\n1 9 \"\"\n9 9 \"\"\n",
         "4 comes back to node 9"},
        // The file as a whole.
        {"a header on the first line, reported once", "[nodes]\n1 \"a\" 0 0\n[edges]\n1 1 \"\"\n",
         "1 first line is always skipped"},
        {"lines above any section, reported once",
         "t\n1 \"a\" 0 0\n2 \"b\" 0 0\n[nodes]\n1 \"a\" 0 0\n", "2 above the first section header"},
        {"an unknown header, and what is below it", with_nodes("[edge]\n1 9\n[nodes]\n"),
         "5 unknown header \"[edge]\""},
        {"a header in capitals, and one with a blank",
         "t\n[Nodes]\n1 \"a\" 0 0\n[edges] \n1 1 \"\"\n", "2 small letters|4 nothing around it"},
        {"no section of nodes", "t\n[edges]\n", "1 no [nodes] section"},
        {"no nodes", "t\n[types]\n[nodes]\n\n[edges]\n", "3 no section of nodes holds"},
        {"only a title", "title\n", "1 no [nodes] section"},
        {"carriage returns, reported once",
         "t\r\n[nodes]\r\n1 \"a\" 0 0\r\n[edges]\r\n1 1 \"\"\r\n",
         "2 carriage returns end 4 lines"},
        {"carriage returns alone", "t\r[nodes]\r1 \"a\" 0 0\r",
         "1 carriage returns stand inside|1 no [nodes] section"},
        {"letters of another encoding, reported once",
         "\xe9\n[nodes]\n1 \"\xc3\xa9\xe2\x82\xac\xed\x9f\xbf\xf0\x9f\x98\x80\" 0 0\n2 \"caf\xe9\" "
         "0 0\n"
         "[edges]\n1 2 \"\xc3\"\n[types]\n\xe9\n",
         "4 not in UTF-8 stand in 2 lines"},
        {"letters longer than need be",
         with_edges("1 2 \"\xe0\x9f\xbf\"\n1 2 \"\xf0\x8f\xbf\xbf\"\n"
                    "1 2 \"\xc1\xbf\"\n"),
         "6 in 3 lines"},
        {"halves of pairs, letters that are none, and cut ones",
         with_nodes(
             "3 \"\xed\xa0\x80\" 0 0\n4 \"\xf4\x90\x80\x80\" 0 0\n5 \"\xf5\x80\x80\x80\" 0 0\n"
             "6 \"\x80\" 0 0\n7 \"\xf0\x9f\x98\" 0 0\n"),
         "5 in 5 lines"},
        {"no text", std::string("t\n[nodes]\n1 \"\0\" 0 0\nx", 22), "3 NUL"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.shows);
        const std::vector<Fault> faults = faults_of(c.text);
        std::istringstream expected(c.faults);
        std::size_t found = 0;
        for (std::string fault; std::getline(expected, fault, '|'); ++found) {
            ASSERT_LT(found, faults.size());
            const std::size_t blank = fault.find(' ');
            EXPECT_EQ(std::to_string(faults[found].line), fault.substr(0, blank));
            EXPECT_NE(faults[found].message.find(fault.substr(blank + 1)), std::string::npos)
                << text_of(faults);
        }
        EXPECT_EQ(faults.size(), found) << text_of(faults);
    }
}

TEST(GraphCheckOfMany, ListsFiftyFaultsByLineAndTheNumberOfTheOthers) {
    std::string edges;
    for (int i = 0; i < 70; ++i) {
        edges += "1 9 \"\"\n";
    }
    edges += "x\n"; // found at once and yet behind the edges, which are found at the end
    const std::vector<Fault> faults = faults_of(with_edges(edges));
    ASSERT_EQ(faults.size(), 51U);
    for (std::size_t i = 0; i < 50; ++i) {
        EXPECT_EQ(faults[i].line, 6 + i);
    }
    EXPECT_EQ(faults.back().message, "... and 22 more");
}

TEST(GraphCheckOfMany, FollowsLongPathsWithoutTheStack) {
    constexpr int LENGTH = 300'000;
    const std::string last = std::to_string(LENGTH);
    std::string text = "t\n[nodes]\n1 \"Thread\" 0 " + last + "\n";
    for (int i = 2; i <= LENGTH; ++i) {
        text += std::to_string(i) + " \"main\" 0 " + std::to_string(i - 1) + "\n";
    }
    text += "[edges]\n";
    for (int i = 1; i < LENGTH; ++i) {
        text += std::to_string(i) + ' ' + std::to_string(i + 1) + " \"\"\n";
    }
    text += last + " 2 \"\"\n";
    const std::vector<Fault> faults = faults_of(text);
    ASSERT_EQ(faults.size(), 2U) << text_of(faults);
    EXPECT_NE(faults[0].message.find("over 299999 other nodes"), std::string::npos);
    EXPECT_NE(faults[1].message.find("after 299999 edges"), std::string::npos);
}

} // namespace
} // namespace nurvex
