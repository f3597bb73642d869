// Simple solids, drawn with the current matrix, colour and state of OpenGL.
//
// Each shape is centred on the origin, except as noted; sizes are in the coordinates of the current
// matrix. Wire shapes are lines, solid ones faces with outward normals. An OpenGL context must be
// current. A negative size means its absolute value.
#pragma once

#include "varnel/foundation/export.h"

namespace varnel {

VARNEL_API void auxWireSphere(double radius);
VARNEL_API void auxSolidSphere(double radius);

/// An edge of `size`.
VARNEL_API void auxWireCube(double size);
VARNEL_API void auxSolidCube(double size);

/// Edges of width (x), height (y) and depth (z).
VARNEL_API void auxWireBox(double width, double height, double depth);
VARNEL_API void auxSolidBox(double width, double height, double depth);

/// A tube of radius `inner` bent into a ring about z; its centre line has the radius `outer`.
VARNEL_API void auxWireTorus(double inner, double outer);
VARNEL_API void auxSolidTorus(double inner, double outer);

/// An open tube along y, downward from y = 1 (whatever its height) to y = 1 - height.
VARNEL_API void auxWireCylinder(double radius, double height);
VARNEL_API void auxSolidCylinder(double radius, double height);

/// Corners at the distance `radius` from the origin.
VARNEL_API void auxWireIcosahedron(double radius);
VARNEL_API void auxSolidIcosahedron(double radius);
VARNEL_API void auxWireOctahedron(double radius);
VARNEL_API void auxSolidOctahedron(double radius);

/// Corners at three times `radius` from the origin.
VARNEL_API void auxWireTetrahedron(double radius);
VARNEL_API void auxSolidTetrahedron(double radius);

/// Corners at sqrt(3) / 1.73 times `radius` from the origin.
VARNEL_API void auxWireDodecahedron(double radius);
VARNEL_API void auxSolidDodecahedron(double radius);

/// An open cone along z: radius `base` at z = 0, the tip at z = height.
VARNEL_API void auxWireCone(double base, double height);
VARNEL_API void auxSolidCone(double base, double height);

}  // namespace varnel
