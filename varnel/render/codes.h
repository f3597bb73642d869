// The numbers that operations of COpenGL take as codes, by name. Plain numbers work as well: the
// operations take int.
#pragma once

namespace varnel {

/// Colour modes of SetColorMode.
enum ColorModeCode {
    COLOR_MODE_FLAT = 0,   ///< the fill colour as it is
    COLOR_MODE_LIT = 1,    ///< the fill colour in the chart's light
    COLOR_MODE_VALUE = 2,  ///< lit, and coloured by value where the texture is enabled
};

/// Which coordinate of a vertex is looked up in the colour texture.
enum TextureModeCode {
    TEXTURE_X = 0,
    TEXTURE_Y = 1,
    TEXTURE_Z = 2,
    TEXTURE_VALUE = 3,  ///< the fourth component, w
};

/// Components of the light; all but the last are OpenGL's own numbers.
enum LightComponentCode {
    LIGHT_AMBIENT = 4608,
    LIGHT_DIFFUSE = 4609,
    LIGHT_SPECULAR = 4610,
    LIGHT_POSITION = 4611,
    LIGHT_MODEL_AMBIENT = 12345,  ///< the ambient colour of the whole scene
};

/// What Clear clears, OpenGL's own numbers.
enum ClearMask {
    CLEAR_DEPTH = 256,
    CLEAR_COLOR = 16384,
    CLEAR_COLOR_AND_DEPTH = 16640,
};

/// Line styles; those from 11 on are solid.
enum LineStyleCode {
    LINE_SOLID = 0,
    LINE_DOTS_WIDE = 1,     ///< one pixel in eight
    LINE_DOTS = 2,          ///< one pixel in four
    LINE_DOTS_DENSE = 3,    ///< every other pixel
    LINE_DASHES_TINY = 4,   ///< two pixels in eight
    LINE_DASHES_SHORT = 5,  ///< three pixels in eight
    LINE_DASHES = 6,        ///< four pixels in eight
    LINE_DASHES_LONG = 7,   ///< eight pixels in sixteen
    LINE_DASH_DOT = 8,
    LINE_DASH_DASH = 9,
    LINE_DASH_DOT_DOT = 10,
};

/// Markers that face the viewer.
enum MarkerCode {
    MARKER_NONE = 0,
    MARKER_CIRCLE = 1,
    MARKER_SQUARE = 2,
    MARKER_TRIANGLE = 3,
    MARKER_DIAMOND = 4,
    MARKER_CROSS = 5,
    MARKER_PLUS = 6,
    MARKER_STAR = 7,
};

/// How the parts of lines meet; see COpenGL::SetLineJoins.
enum LineJoinCode {
    LINE_JOINS_NONE = 0,
    LINE_JOINS_ROUND = 1,
    LINE_JOINS_MITRED = 2,
};

/// What DrawMesh draws.
enum MeshDrawing {
    MESH_FILLED = 0,              ///< fills, with frames when SetFrameFilled is on
    MESH_WIRE = 1,                ///< frames alone, in their polygons' frame colours
    MESH_WIRE_IN_LINE_COLOR = 2,  ///< frames alone, in the line colour
};

/// Shapes of DrawAuxObject; see render/aux_shapes.h.
enum AuxShapeCode {
    AUX_SPHERE = 1,
    AUX_CUBE = 2,
    AUX_BOX = 3,
    AUX_TORUS = 4,
    AUX_CYLINDER = 5,
    AUX_ICOSAHEDRON = 6,
    AUX_OCTAHEDRON = 7,
    AUX_TETRAHEDRON = 8,
    AUX_DODECAHEDRON = 9,
    AUX_CONE = 10,
};

}  // namespace varnel
