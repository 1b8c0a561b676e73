// Drawings of many entities of mixed kinds for the benchmarks.
#pragma once

#include <memory>
#include <random>

#include "host/db/Database.h"

namespace zarvel_bench {

// Lines, arcs, circles, ellipses, bulged polylines, texts and splines, spread
// over a square of that side.
inline void fill(host::Database& db, int count, std::mt19937& random, double side = 1000.0) {
  std::uniform_real_distribution<double> at(0.0, side);
  std::uniform_real_distribution<double> size(1.0, 20.0);
  platform::Point3d p;
  for (int i = 0; i < count; ++i) {
    // Entities come in pairs at nearly one place, so that each pair overlaps.
    if (i % 2 == 0) {
      p = {at(random), at(random), 0.0};
    } else {
      p = {p.x + 1.5, p.y + 0.5, 0.0};
    }
    const double r = size(random);
    std::unique_ptr<host::Entity> e;
    switch (i % 7) {
      case 0: {
        auto line = std::make_unique<host::LineEntity>();
        line->start = p;
        line->end = {p.x + r, p.y + r / 2, 0.0};
        e = std::move(line);
        break;
      }
      case 1: {
        auto arc = std::make_unique<host::ArcEntity>();
        arc->center = p;
        arc->radius = r;
        arc->startAngle = 0.3;
        arc->endAngle = 2.5;
        e = std::move(arc);
        break;
      }
      case 2: {
        auto circle = std::make_unique<host::CircleEntity>();
        circle->center = p;
        circle->radius = r;
        e = std::move(circle);
        break;
      }
      case 3: {
        auto ellipse = std::make_unique<host::EllipseEntity>();
        ellipse->center = p;
        ellipse->majorAxis = {r, r / 3, 0.0};
        ellipse->ratio = 0.5;
        e = std::move(ellipse);
        break;
      }
      case 4: {
        auto pl = std::make_unique<host::LwPolylineEntity>();
        pl->vertices = {
            {p.x, p.y, 0.0}, {p.x + r, p.y, 0.5}, {p.x + r, p.y + r, 0.0}, {p.x, p.y + r, -0.3}};
        pl->closed = true;
        e = std::move(pl);
        break;
      }
      case 5: {
        auto text = std::make_unique<host::TextEntity>();
        text->data.position = p;
        text->data.height = r / 5;
        text->data.rotation = 0.4;
        text->data.text = L"Road 12";
        e = std::move(text);
        break;
      }
      default: {
        auto spline = std::make_unique<host::SplineEntity>();
        spline->degree = 3;
        spline->controlPoints = {
            p, {p.x + r, p.y + r, 0}, {p.x + 2 * r, p.y - r, 0}, {p.x + 3 * r, p.y, 0}};
        spline->knots = {0, 0, 0, 0, 1, 1, 1, 1};
        e = std::move(spline);
        break;
      }
    }
    db.addEntity(std::move(e), db.modelSpace());
  }
}

}  // namespace zarvel_bench
