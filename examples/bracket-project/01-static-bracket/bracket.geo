// The bracket as a solid: an L of 5 mm sheet, 60 mm long, 60 mm high, 40 mm deep
length = 60; height = 60; depth = 40; sheet = 5;
Point(1) = {0, 0, 0, sheet};
Point(2) = {length, 0, 0, sheet};
Point(3) = {length, 0, sheet, sheet};
Point(4) = {sheet, 0, sheet, sheet};
Point(5) = {sheet, 0, height, sheet};
Point(6) = {0, 0, height, sheet};
Line(1) = {1, 2};
Line(2) = {2, 3};
Line(3) = {3, 4};
Line(4) = {4, 5};
Line(5) = {5, 6};
Line(6) = {6, 1};
Curve Loop(1) = {1, 2, 3, 4, 5, 6};
Plane Surface(1) = {1};
Extrude {0, depth, 0} { Surface{1}; }
Physical Volume("bracket") = {1};
