// Lays a text graph out by another program, and prints the processor time of one layout in
// milliseconds. Without a graph it only looks whether the program is there.
//
//   node peers.js dagre|elk [GRAPH.txt GRAPH.sizes]

const fs = require("fs");
const path = require("path");

const RUNS = 3;
const ENOUGH_MS = 10000; // no further run is begun after that

function find(names) {
    for (const name of names) {
        try {
            return require(require.resolve(name, { paths: [process.cwd(), ...module.paths] }));
        } catch (error) {
            if (error.code !== "MODULE_NOT_FOUND") throw error;
        }
    }
    process.exit(3);
}

function read(graphFile, sizesFile) {
    const nodes = fs.readFileSync(sizesFile, "utf8").trim().split("\n").map((line) => {
        const [id, width, height] = line.split(" ");
        return { id, width: Number(width), height: Number(height) };
    });
    const lines = fs.readFileSync(graphFile, "utf8").split("\n");
    const edges = lines.slice(lines.indexOf("[edges]") + 1).filter((line) => line !== "")
        .map((line) => line.split(" "));
    return { nodes, edges };
}

// Each gives what lays one fresh graph out.
const peers = {
    dagre() {
        const dagre = find(["@dagrejs/dagre", "dagre"]);
        return ({ nodes, edges }) => {
            const graph = new dagre.graphlib.Graph({ multigraph: true });
            graph.setGraph({ rankdir: "LR", nodesep: 12, edgesep: 2, ranksep: 30 });
            graph.setDefaultEdgeLabel(() => ({}));
            for (const { id, width, height } of nodes) graph.setNode(id, { width, height });
            edges.forEach(([from, to], i) => graph.setEdge(from, to, {}, `e${i}`));
            return () => dagre.layout(graph);
        };
    },
    elk() {
        const Elk = find(["elkjs"]);
        return ({ nodes, edges }) => {
            const graph = {
                id: "root",
                layoutOptions: {
                    "elk.algorithm": "layered",
                    "elk.direction": "RIGHT",
                    "elk.edgeRouting": "POLYLINE",
                    "elk.spacing.nodeNode": "12",
                    "elk.layered.spacing.nodeNodeBetweenLayers": "30",
                },
                children: nodes.map((node) => ({ ...node })),
                edges: edges.map(([from, to], i) =>
                    ({ id: `e${i}`, sources: [from], targets: [to] })),
            };
            const elk = new Elk();
            return () => elk.layout(graph);
        };
    },
};

function processorMs(since) {
    const { user, system } = process.cpuUsage(since);
    return (user + system) / 1000;
}

async function main([peer, graphFile, sizesFile]) {
    const prepare = peers[peer]();
    if (!graphFile) return;
    const content = read(path.resolve(graphFile), path.resolve(sizesFile));
    const times = [];
    for (let total = 0; times.length < RUNS && total < ENOUGH_MS; total += times.at(-1)) {
        const layOut = prepare(content);
        const start = process.cpuUsage();
        await layOut();
        times.push(processorMs(start));
    }
    times.sort((a, b) => a - b);
    console.log(times[Math.floor(times.length / 2)].toFixed(3));
}

main(process.argv.slice(2)).catch((error) => {
    console.error(String(error));
    process.exit(1);
});
