#pragma once

#include "nurvex7/model/node.h"
#include "nurvex7/platform/brevolt7/element_ref.h"

namespace nurvex7 {

class CContent;

/// Holds a node at its pixel: at the end of its scope it brings the layout up to date and moves the
/// view by as much as the node has moved. A node that has left the graph meanwhile holds nothing.
class CoordsKeeper {
public:
    CoordsKeeper(CContent* of_content, const Node& kept);
    CoordsKeeper(const CoordsKeeper&) = delete;
    CoordsKeeper& operator=(const CoordsKeeper&) = delete;
    ~CoordsKeeper();

private:
    brevolt7::CElementRef alive;
    CContent* content;
    Node node;
    tamsel7::point<double> saved_position;
};

} // namespace nurvex7
