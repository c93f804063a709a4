// Plane geometry of the page: x is east and y north, in metres.
"use strict";

// The area of a ring, from its first vertex so that large coordinates cost no digits.
function ringArea(ring) {
  let twice = 0;
  const [x0, y0] = ring[0];
  for (let i = 1; i + 1 < ring.length; ++i) {
    twice += (ring[i][0] - x0) * (ring[i + 1][1] - y0) - (ring[i + 1][0] - x0) * (ring[i][1] - y0);
  }
  return Math.abs(twice) / 2;
}

// Clockwise from north, in degrees, minutes and seconds.
function bearingText(dx, dy) {
  let seconds = Math.round(((Math.atan2(dx, dy) * 180) / Math.PI + 360) * 3600 * 10) / 10 % (360 * 3600);
  const degrees = Math.floor(seconds / 3600);
  seconds -= degrees * 3600;
  const minutes = Math.floor(seconds / 60);
  return `${degrees}°${String(minutes).padStart(2, "0")}′${(seconds - minutes * 60).toFixed(1).padStart(4, "0")}″`;
}

function segmentDistance(x, y, a, b) {
  const dx = b[0] - a[0];
  const dy = b[1] - a[1];
  const square = dx * dx + dy * dy;
  const t = square > 0 ? Math.min(1, Math.max(0, ((x - a[0]) * dx + (y - a[1]) * dy) / square)) : 0;
  return Math.hypot(x - a[0] - t * dx, y - a[1] - t * dy);
}

// Objects by the cells of a square grid that their boxes meet. An object of very many cells stands in a list of its own.
class Grid {
  constructor(objects, extent) {
    const size = Math.max(extent.maxX - extent.minX, extent.maxY - extent.minY, 1e-6);
    this.cell = size / Math.max(1, Math.min(256, Math.ceil(Math.sqrt(objects.length))));
    this.extent = extent;
    this.cells = new Map();
    this.large = [];
    for (const object of objects) {
      const box = this.range(object.box);
      if ((box.x1 - box.x0 + 1) * (box.y1 - box.y0 + 1) > 64) {
        this.large.push(object);
        continue;
      }
      for (let x = box.x0; x <= box.x1; ++x) {
        for (let y = box.y0; y <= box.y1; ++y) {
          const key = x * 1024 + y;
          const list = this.cells.get(key);
          list ? list.push(object) : this.cells.set(key, [object]);
        }
      }
    }
  }
  range(box) {
    const at = (v, origin) => Math.min(257, Math.max(-1, Math.floor((v - origin) / this.cell))) + 1;
    return { x0: at(box.minX, this.extent.minX), x1: at(box.maxX, this.extent.minX), y0: at(box.minY, this.extent.minY), y1: at(box.maxY, this.extent.minY) };
  }
  // The objects whose boxes may meet that one.
  within(box) {
    const found = new Set(this.large);
    const range = this.range(box);
    for (let x = range.x0; x <= range.x1; ++x) {
      for (let y = range.y0; y <= range.y1; ++y) {
        for (const object of this.cells.get(x * 1024 + y) ?? []) {
          found.add(object);
        }
      }
    }
    return found;
  }
}

function boxOf(points) {
  const box = { minX: Infinity, minY: Infinity, maxX: -Infinity, maxY: -Infinity };
  for (const [x, y] of points) {
    box.minX = Math.min(box.minX, x);
    box.maxX = Math.max(box.maxX, x);
    box.minY = Math.min(box.minY, y);
    box.maxY = Math.max(box.maxY, y);
  }
  return box;
}
