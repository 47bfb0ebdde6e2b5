// Points, boxes, colours and matrices of 3ds Max's SDK.
#pragma once

#include "hosts/max/sdk_standin/sdk_types.h"

class Point3 {
  public:
    Point3() = default;
    Point3(float newX, float newY, float newZ) : x(newX), y(newY), z(newZ) {}

    float x = 0;
    float y = 0;
    float z = 0;
};

class Point4 {
  public:
    Point4() = default;
    Point4(float newX, float newY, float newZ, float newW) : x(newX), y(newY), z(newZ), w(newW) {}

    float x = 0;
    float y = 0;
    float z = 0;
    float w = 0;
};

class Color {
  public:
    Color() = default;
    Color(float red, float green, float blue) : r(red), g(green), b(blue) {}

    float r = 0;
    float g = 0;
    float b = 0;
};

// A fresh box is empty: its minimum lies above its maximum.
class Box3 {
  public:
    Point3 Min() const { return pmin; }
    Point3 Max() const { return pmax; }

    Point3 pmin{1e30F, 1e30F, 1e30F};
    Point3 pmax{-1e30F, -1e30F, -1e30F};
};

class Matrix3;

// Row vectors, translation in the fourth row.
class GMatrix {
  public:
    GMatrix() : rows_{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}} {}
    Point4 GetRow(int row) const { return rows_[row]; }
    void SetRow(int row, Point4 value) { rows_[row] = value; }

  private:
    Point4 rows_[4];
};
