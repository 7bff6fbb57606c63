// The triangle that a texture is drawn on.
#pragma once

// Three vertices in any order and either winding; the operations only read them. The target's pixels from edge to edge,
// both ends inclusive, show the source's texels, mapped affinely.
//
// For exact results x, u and v, and the differences of any two vertices' values, lie within -32768 to 32767, and u and
// v inside the source, and inside its plane where one is drawn through. A face that breaks this is drawn as far as it
// can be: co-ordinates may be of any size, and texels beyond an edge of the source are those of the edge. Source and
// target must not share memory: the order in which pixels are read and written within a row is free.
struct FACE3D {
    struct Vertex {
        int x, y;   // in the target, pixels
        int u, v;   // in the source, texels
    };
    Vertex vertices[3];
};
