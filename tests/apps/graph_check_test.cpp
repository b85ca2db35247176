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

struct Expected {
    std::size_t line;
    std::string words; ///< that the message holds
};

struct Scenario {
    std::string name;
    std::string text;
    std::vector<Expected> faults;
};

void PrintTo(const Scenario& scenario, std::ostream* out) {
    *out << scenario.name;
}

class GraphCheck : public testing::TestWithParam<Scenario> {};

TEST_P(GraphCheck, NamesTheLinesAtFault) {
    const std::vector<Fault> faults = faults_of(GetParam().text);
    ASSERT_EQ(faults.size(), GetParam().faults.size()) << text_of(faults);
    for (std::size_t i = 0; i < faults.size(); ++i) {
        EXPECT_EQ(faults[i].line, GetParam().faults[i].line) << text_of(faults);
        EXPECT_NE(faults[i].message.find(GetParam().faults[i].words), std::string::npos)
            << text_of(faults);
    }
}

// Functions and no constants: the tables below are filled before the constants of this file are.
std::string with_nodes(const std::string& rest) {
    return "t\n[nodes]\n1 \"a\" 0 0\n2 \"b\" 0 0\n" + rest; // from line 5 on
}

std::string with_edges(const std::string& rest) {
    return with_nodes("[edges]\n" + rest); // from line 6 on
}

std::string with_thread(const std::string& edges) {
    return "t\n[nodes]\n1 \"my Thread\" 0 0\n2 \"main\" 0 0\n3 \"xmain\" 0 0\n[edges]\n" + edges;
}

INSTANTIATE_TEST_SUITE_P(
    Fine, GraphCheck,
    testing::Values(
        Scenario{"an empty file", "", {}},
        Scenario{"nodes, edges and types",
                 with_nodes("[types]\nanything x] \"\n[edges]\n1 2 \"e\"\n2 2 \"\" more\n"),
                 {}},
        Scenario{
            "owners in any order", "t\n[clusters]\n1 \"a\" -7 2\n\n[nodes]\n2 \"C\" 0 0\n", {}},
        Scenario{"signs, tabs, quotes inside, no newline at the end",
                 "t\n[nodes]\n+1\t\"a \"quoted\" b\"-5 +0 ignored\n  \n007 \"\" 0 1",
                 {}},
        Scenario{"an edge without a caption", with_edges("1 2"), {}},
        Scenario{"a Thread whose path of main nodes ends",
                 with_thread("1 3 \"\"\n1 2 \"\"\n3 1 \"\"\n3 3 \"\"\n"),
                 {}},
        Scenario{"a loop of main nodes without a Thread",
                 "t\n[nodes]\n1 \"main\" 0 0\n[edges]\n1 1 \"\"\n",
                 {}}));

INSTANTIATE_TEST_SUITE_P(
    Nodes, GraphCheck,
    testing::Values(
        Scenario{"no id", with_nodes("\"c\" 0 0\n"), {{5, "without an id"}}},
        Scenario{"an id that stands for none", with_nodes("-1 \"c\" 0 0\n"), {{5, "-1"}}},
        Scenario{"no quotes", with_nodes("3 0 0\n"), {{5, "without a caption"}}},
        Scenario{"one quote", with_nodes("3 \"c 0 0\n"), {{5, "only one double quote"}}},
        Scenario{"no numbers", with_nodes("3 \"c\"\n"), {{5, "fewer than two numbers"}}},
        Scenario{"one number", with_nodes("3 \"c\" 0\n"), {{5, "fewer than two numbers"}}},
        Scenario{
            "a malformed id", with_nodes("x3 \"c\" 0 0\n"), {{5, "\"x3\", which is no whole"}}},
        Scenario{"letters behind the id do not hide the node",
                 with_nodes("3x \"c\" 0 0\n4 \"d\" 0 3\n"),
                 {{5, "\"3x\""}}},
        Scenario{"a malformed type", with_nodes("3 \"c\" 1.5 0\n"), {{5, "the type"}}},
        Scenario{"a malformed owner", with_nodes("3 \"c\" 0 1,\n"), {{5, "the owner"}}},
        Scenario{"numbers that do not fit",
                 with_nodes("3 \"c\" 2147483648 -2147483649\n"),
                 {{5, "the type"}, {5, "the owner"}}},
        Scenario{"control letters are not passed on",
                 with_nodes("\x1b[2J \"c\" 0 0\n"),
                 {{5, "\"?[2J\""}}},
        Scenario{"an id twice",
                 with_nodes("1 \"c\" 0 2\n"),
                 {{5, "the id 1 is taken by the node of line 3"}}}));

INSTANTIATE_TEST_SUITE_P(
    Owners, GraphCheck,
    testing::Values(Scenario{"unknown",
                             with_nodes("3 \"c\" 0 9\n4 \"d\" 0 0\n"),
                             {{5, "the owner of node 3 is node 9, which no line defines"}}},
                    Scenario{
                        "itself", with_nodes("3 \"c\" 0 3\n"), {{5, "node 3 is its own owner"}}},
                    Scenario{"in a circle, with a node that hangs on it",
                             "t\n[nodes]\n4 \"d\" 0 1\n1 \"a\" 0 2\n2 \"b\" 0 3\n3 \"c\" 0 1\n",
                             {{4, "node 1 is inside itself"}}},
                    Scenario{"in two circles",
                             "t\n[nodes]\n1 \"a\" 0 2\n2 \"b\" 0 1\n3 \"c\" 0 4\n4 \"d\" 0 3\n",
                             {{3, "over 1 other node;"}, {5, "node 3"}}}));

INSTANTIATE_TEST_SUITE_P(
    Edges, GraphCheck,
    testing::Values(
        Scenario{"an end that nobody defines",
                 with_edges("1 2 \"\"\n1 99 \"\"\n"),
                 {{7, "edge ends at node 99, which no line above defines; add the node or correct "
                      "the number"}}},
        Scenario{"a node that comes later",
                 with_edges("3 1 \"\"\n[nodes]\n3 \"c\" 0 0\n"),
                 {{6, "edge starts at node 3, which no line above defines, only line 8 below"}}},
        Scenario{"both ends at once",
                 with_edges("8 9 \"\"\n"),
                 {{6, "starts at node 8"}, {6, "ends at node 9"}}},
        Scenario{"no numbers", with_edges("\"c\"\n"), {{6, "fewer than two numbers"}}},
        Scenario{"one number", with_edges("1 \"2\"\n"), {{6, "fewer than two numbers"}}},
        Scenario{"malformed and too large",
                 with_edges("1- 99999999999 \"\"\n"),
                 {{6, "the source"}, {6, "the target"}}},
        Scenario{"one quote", with_edges("1 2 \"\n"), {{6, "only one double quote"}}},
        Scenario{"from -1", with_edges("-1 2 \"\"\n"), {{6, "starts at node -1"}}}));

INSTANTIATE_TEST_SUITE_P(
    Threads, GraphCheck,
    testing::Values(Scenario{"a path that comes back",
                             with_thread("1 3 \"\"\n3 2 \"\"\n2 3 \"\"\n"),
                             {{4, "comes back to node 2 after 2 edges"}}},
                    Scenario{"a main node with an edge to itself",
                             with_thread("1 2 \"\"\n2 2 \"\"\n"),
                             {{4, "after 1 edge "}}},
                    Scenario{
                        "the first main child by line decides, not by id",
                        "t\n[nodes]\n1 \"Thread\" 0 0\n9 \"main\" 0 0\n2 \"main\" 0 0\n[edges]\n"
                        "1 2 \"\"\n1 9 \"\"\n9 9 \"\"\n",
                        {{4, "comes back to node 9"}}}));

INSTANTIATE_TEST_SUITE_P(
    Files, GraphCheck,
    testing::Values(
        Scenario{"a header on the first line, reported once",
                 "[nodes]\n1 \"a\" 0 0\n[edges]\n1 1 \"\"\n",
                 {{1, "first line is always skipped"}}},
        Scenario{"lines above any section, reported once",
                 "t\n1 \"a\" 0 0\n2 \"b\" 0 0\n[nodes]\n1 \"a\" 0 0\n",
                 {{2, "above the first section header"}}},
        Scenario{"an unknown header, and what is below it",
                 with_nodes("[edge]\n1 9\n[nodes]\n"),
                 {{5, "unknown header \"[edge]\""}}},
        Scenario{"a header in capitals, and one with a blank",
                 "t\n[Nodes]\n1 \"a\" 0 0\n[edges] \n1 1 \"\"\n",
                 {{2, "small letters"}, {4, "nothing around it"}}},
        Scenario{"no section of nodes", "t\n[edges]\n", {{1, "no [nodes] section"}}},
        Scenario{
            "no nodes", "t\n[types]\n[nodes]\n\n[edges]\n", {{3, "no section of nodes holds"}}},
        Scenario{"only a title", "title\n", {{1, "no [nodes] section"}}},
        Scenario{"carriage returns, reported once",
                 "t\r\n[nodes]\r\n1 \"a\" 0 0\r\n[edges]\r\n1 1 \"\"\r\n",
                 {{2, "carriage returns end 4 lines"}}},
        Scenario{"carriage returns alone",
                 "t\r[nodes]\r1 \"a\" 0 0\r",
                 {{1, "carriage returns stand inside"}, {1, "no [nodes] section"}}},
        Scenario{"no text", std::string("t\n[nodes]\n1 \"\0\" 0 0\nx", 22), {{3, "NUL"}}}));

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
