// The plan: objects painted on a canvas, with pan, zoom, fit, picking and measuring.
"use strict";

const kMostDrawn = 40000; // objects in one picture
const kMostLabels = 400;
const kMostRound = 2000; // points; more are painted as squares
const kSlow = 40; // milliseconds of painting
const kRest = 120; // milliseconds
const kReach = 8; // pixels around the pointer
const kWheelStep = 1.0015;

class Plan {
  // onHover(object or null, x, y) and onPick(object or null) are called with what the pointer meets; onMeasure(points).
  constructor(canvas, { onHover, onPick, onMeasure }) {
    this.canvas = canvas;
    this.context = canvas.getContext("2d");
    Object.assign(this, { onHover, onPick, onMeasure });
    this.objects = [];
    this.hidden = new Set(); // "kind\u0000layer"
    this.names = true;
    this.stations = [];
    this.showStations = true;
    this.measuring = null;
    this.selected = null;
    this.hovered = null;
    this.overflow = false;
    this.scale = 1; // pixels to the metre
    this.x = 0; // metres in the middle of the canvas
    this.y = 0;
    this.queued = false;
    this.pointers = new Map();
    this.listen();
    new ResizeObserver(() => this.draw()).observe(canvas);
    matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () => this.draw());
  }

  set(objects) {
    this.objects = objects.filter((object) => object.box);
    const extent = { minX: Infinity, minY: Infinity, maxX: -Infinity, maxY: -Infinity };
    for (const { box } of this.objects) {
      extent.minX = Math.min(extent.minX, box.minX);
      extent.minY = Math.min(extent.minY, box.minY);
      extent.maxX = Math.max(extent.maxX, box.maxX);
      extent.maxY = Math.max(extent.maxY, box.maxY);
    }
    this.extent = this.objects.length > 0 ? extent : { minX: 0, minY: 0, maxX: 1, maxY: 1 };
    this.grid = new Grid(this.objects, this.extent);
    this.selected = this.hovered = this.measuring = this.picture = null;
    this.fit();
  }

  fit() {
    this.frame(this.extent ?? { minX: 0, minY: 0, maxX: 1, maxY: 1 }, 0.92);
  }
  frame(box, part) {
    const width = Math.max(box.maxX - box.minX, 1e-3);
    const height = Math.max(box.maxY - box.minY, 1e-3);
    this.x = (box.minX + box.maxX) / 2;
    this.y = (box.minY + box.maxY) / 2;
    this.scale = part * Math.min((this.canvas.clientWidth || 600) / width, (this.canvas.clientHeight || 400) / height);
    this.draw();
  }
  // Brings an object into sight, and leaves the scale where it can.
  reveal(object) {
    const view = this.view();
    const { box } = object;
    if (box && (box.maxX > view.maxX || box.minX < view.minX || box.maxY > view.maxY || box.minY < view.minY)) {
      const small = Math.max(box.maxX - box.minX, box.maxY - box.minY) * this.scale < 50;
      if (small) {
        this.x = (box.minX + box.maxX) / 2;
        this.y = (box.minY + box.maxY) / 2;
      } else {
        this.frame(box, 0.6);
      }
    }
    this.select(object);
  }
  select(object) {
    this.selected = object;
    this.draw();
  }
  zoom(factor, px = this.canvas.clientWidth / 2, py = this.canvas.clientHeight / 2) {
    const [x, y] = this.world(px, py);
    this.scale = Math.min(1e5, Math.max(1e-7, this.scale * factor));
    const [nowX, nowY] = this.world(px, py);
    this.x += x - nowX;
    this.y += y - nowY;
    this.draw();
  }
  pan(dx, dy) {
    this.x -= dx / this.scale;
    this.y += dy / this.scale;
    this.draw();
  }

  world(px, py) {
    return [this.x + (px - this.canvas.clientWidth / 2) / this.scale, this.y - (py - this.canvas.clientHeight / 2) / this.scale];
  }
  pixel(x, y) {
    return [this.canvas.clientWidth / 2 + (x - this.x) * this.scale, this.canvas.clientHeight / 2 - (y - this.y) * this.scale];
  }
  view() {
    const [minX, maxY] = this.world(0, 0);
    const [maxX, minY] = this.world(this.canvas.clientWidth, this.canvas.clientHeight);
    return { minX, minY, maxX, maxY };
  }
  shown(object) {
    return !this.hidden.has(object.kind + "\u0000" + object.layer);
  }

  // The nearest object within reach of a pixel; points before lines.
  pick(px, py) {
    if (!this.grid) {
      return null;
    }
    const [x, y] = this.world(px, py);
    const reach = kReach / this.scale;
    let best = null;
    let least = reach;
    for (const object of this.grid.within({ minX: x - reach, minY: y - reach, maxX: x + reach, maxY: y + reach })) {
      if (!this.shown(object)) {
        continue;
      }
      const { points } = object;
      let distance = Infinity;
      if (points.length === 1) {
        distance = Math.hypot(points[0][0] - x, points[0][1] - y) * 0.5;
      }
      for (let i = 1; i < points.length; ++i) {
        distance = Math.min(distance, segmentDistance(x, y, points[i - 1], points[i]));
      }
      if (distance < least) {
        least = distance;
        best = object;
      }
    }
    return best;
  }

  draw() {
    if (!this.queued) {
      this.queued = true;
      requestAnimationFrame(() => {
        this.queued = false;
        this.paint();
      });
    }
  }

  paint() {
    const { canvas, context } = this;
    const ratio = devicePixelRatio || 1;
    const width = canvas.clientWidth;
    const height = canvas.clientHeight;
    if (canvas.width !== Math.round(width * ratio) || canvas.height !== Math.round(height * ratio)) {
      canvas.width = Math.round(width * ratio);
      canvas.height = Math.round(height * ratio);
    }
    context.setTransform(ratio, 0, 0, ratio, 0, 0);
    context.clearRect(0, 0, width, height);
    if (!this.grid) {
      return;
    }
    clearTimeout(this.later);
    if (this.picture && !this.whole) {
      this.paintPicture(width, height);
      this.later = setTimeout(() => {
        this.whole = true;
        this.draw();
      }, kRest);
      return;
    }
    this.whole = false;
    const started = performance.now();
    const dark = matchMedia("(prefers-color-scheme: dark)").matches ? 1 : 0;
    const visible = [];
    this.overflow = false;
    for (const object of this.grid.within(this.view())) {
      if (this.shown(object)) {
        if (visible.length === kMostDrawn) {
          this.overflow = true;
          break;
        }
        visible.push(object);
      }
    }
    const groups = new Map(); // one path for each colour and form
    for (const object of visible) {
      const form = object.points.length === 1 ? "point" : object.ring ? "ring" : "line";
      const key = object.kind + form;
      const group = groups.get(key);
      group ? group.objects.push(object) : groups.set(key, { form, kind: object.kind, objects: [object] });
    }
    for (const form of ["ring", "line", "point"]) {
      for (const group of groups.values()) {
        if (group.form === form) {
          this.paintGroup(group, kindOf(group.kind).colour[dark]);
        }
      }
    }
    for (const [object, colour] of [[this.hovered, dark ? "#ffffff" : "#000000"], [this.selected, "#e67e00"]]) {
      if (object?.points) {
        this.paintGroup({ form: object.points.length === 1 ? "point" : object.ring ? "ring" : "line", objects: [object] }, colour, 3);
      }
    }
    this.paintLabels(visible, dark ? "#e8ecf0" : "#1b2024");
    this.paintMeasure(dark ? "#ffd166" : "#a11d68");
    this.paintScale(width, height, dark ? "#e8ecf0" : "#1b2024");
    this.picture = performance.now() - started > kSlow ? this.keepPicture() : null;
  }

  // What is painted now, and where it lies. A plan that takes long to paint is moved as this picture, and painted when
  // the movement rests.
  keepPicture() {
    const { canvas, x, y, scale } = this;
    const copy = document.createElement("canvas");
    copy.width = canvas.width;
    copy.height = canvas.height;
    copy.getContext("2d").drawImage(canvas, 0, 0);
    return { copy, x, y, scale, width: canvas.clientWidth, height: canvas.clientHeight };
  }
  paintPicture(width, height) {
    const { copy, x, y, scale, width: was, height: high } = this.picture;
    const factor = this.scale / scale;
    const [px, py] = this.pixel(x, y);
    this.context.drawImage(copy, px - (was / 2) * factor, py - (high / 2) * factor, was * factor, high * factor);
  }

  paintGroup({ form, kind, objects }, colour, weight = kindOf(kind).isAlignment ? 2 : 1) {
    const { context } = this;
    context.beginPath();
    for (const { points } of objects) {
      if (form === "point") {
        const [px, py] = this.pixel(points[0][0], points[0][1]);
        if (weight > 2) {
          context.moveTo(px + 5, py);
          context.arc(px, py, 5, 0, 7);
        } else if (objects.length > kMostRound) {
          context.fillStyle = colour;
          context.fillRect(px - 1.5, py - 1.5, 3, 3); // many arcs in one path are slow
        } else {
          context.moveTo(px + 2, py);
          context.arc(px, py, 2, 0, 7);
        }
        continue;
      }
      points.forEach(([x, y], i) => {
        const [px, py] = this.pixel(x, y);
        i === 0 ? context.moveTo(px, py) : context.lineTo(px, py);
      });
    }
    context.lineWidth = weight;
    context.strokeStyle = context.fillStyle = colour;
    if (form === "point" && weight <= 2) {
      context.fill();
    } else {
      context.stroke();
    }
    if (form === "ring") {
      context.globalAlpha = 0.08;
      context.fill();
      context.globalAlpha = 1;
    }
  }

  // Names where there is room for them, lots and alignments before points.
  paintLabels(visible, colour) {
    const { canvas, context } = this;
    context.font = "11px system-ui, sans-serif";
    context.fillStyle = colour;
    const taken = new Set();
    let count = 0;
    const put = (text, x, y) => {
      const [px, py] = this.pixel(x, y);
      const cells = [];
      const end = px + 5 + context.measureText(text).width;
      // Out of view; and at some 1e17 pixels the next cell would be the same number.
      if (!(end > 0 && px + 5 < canvas.clientWidth && py - 4 > 0 && py - 14 < canvas.clientHeight)) {
        return;
      }
      for (let column = Math.floor((px + 5) / 8); column <= end / 8; ++column) {
        for (let row = Math.floor((py - 14) / 6); row <= (py - 4) / 6; ++row) {
          cells.push(column * 65536 + row);
        }
      }
      if (cells.some((cell) => taken.has(cell))) {
        return;
      }
      cells.forEach((cell) => taken.add(cell));
      context.fillText(text, px + 5, py - 4);
      ++count;
    };
    if (this.showStations) {
      for (const { text, x, y } of this.stations) {
        put(text, x, y);
      }
    }
    if (!this.names) {
      return;
    }
    const rank = (object) => (kindOf(object.kind).isAlignment ? 0 : object.points.length > 1 ? 1 : 2);
    const named = visible.length > 5000 ? visible.filter((object) => rank(object) < 2) : visible;
    const tried = 20 * kMostLabels;
    for (const object of [...named].sort((a, b) => rank(a) - rank(b)).slice(0, tried)) {
      if (count >= kMostLabels) {
        return;
      }
      if (object.name) {
        const { box, points } = object;
        const middle = points[Math.floor(points.length / 2)];
        object.ring ? put(object.name, (box.minX + box.maxX) / 2, (box.minY + box.maxY) / 2) : put(object.name, middle[0], middle[1]);
      }
    }
  }

  paintMeasure(colour) {
    if (!this.measuring?.length) {
      return;
    }
    const { context } = this;
    context.beginPath();
    this.measuring.forEach(([x, y], i) => {
      const [px, py] = this.pixel(x, y);
      i === 0 ? context.moveTo(px, py) : context.lineTo(px, py);
      context.rect(px - 2, py - 2, 4, 4);
      context.moveTo(px, py);
    });
    context.strokeStyle = colour;
    context.lineWidth = 2;
    context.stroke();
  }

  paintScale(width, height, colour) {
    const { context } = this;
    const metres = 100 / this.scale;
    const power = 10 ** Math.floor(Math.log10(metres));
    const length = [5, 2, 1].map((n) => n * power).find((n) => n <= metres) ?? power;
    context.strokeStyle = context.fillStyle = colour;
    context.lineWidth = 1;
    context.beginPath();
    context.moveTo(12, height - 18);
    context.lineTo(12, height - 12);
    context.lineTo(12 + length * this.scale, height - 12);
    context.lineTo(12 + length * this.scale, height - 18);
    context.stroke();
    context.fillText(length >= 1000 ? `${length / 1000} km` : `${Number(length.toPrecision(1))} m`, 16, height - 18);
  }

  listen() {
    const { canvas } = this;
    const at = (event) => {
      const box = canvas.getBoundingClientRect();
      return [event.clientX - box.left, event.clientY - box.top];
    };
    let moved = 0;
    canvas.addEventListener("pointerdown", (event) => {
      canvas.setPointerCapture(event.pointerId);
      this.pointers.set(event.pointerId, at(event));
      moved = 0;
    });
    canvas.addEventListener("pointermove", (event) => {
      const [px, py] = at(event);
      const before = this.pointers.get(event.pointerId);
      if (before) {
        const others = [...this.pointers.entries()].filter(([id]) => id !== event.pointerId);
        if (others.length === 1) {
          const [ox, oy] = others[0][1];
          const was = Math.hypot(before[0] - ox, before[1] - oy);
          const now = Math.hypot(px - ox, py - oy);
          if (was > 0 && now > 0) {
            this.zoom(now / was, (px + ox) / 2, (py + oy) / 2);
          }
          moved = 99;
        } else {
          moved += Math.hypot(px - before[0], py - before[1]);
          this.pan(px - before[0], py - before[1]);
        }
        this.pointers.set(event.pointerId, [px, py]);
        return;
      }
      const found = this.pick(px, py);
      if (found !== this.hovered) {
        this.hovered = found;
        this.draw();
      }
      this.onHover(found, ...this.world(px, py));
    });
    const up = (event) => {
      const down = this.pointers.delete(event.pointerId);
      if (event.type === "pointerup" && down && moved < 4) {
        this.press(...at(event));
      }
    };
    canvas.addEventListener("pointerup", up);
    canvas.addEventListener("pointercancel", up);
    canvas.addEventListener("pointerleave", () => {
      this.hovered = null;
      this.draw();
    });
    canvas.addEventListener("wheel", (event) => {
      event.preventDefault();
      this.zoom(kWheelStep ** -event.deltaY, ...at(event));
    }, { passive: false });
    canvas.addEventListener("keydown", (event) => {
      const step = 40;
      const actions = {
        ArrowLeft: () => this.pan(step, 0),
        ArrowRight: () => this.pan(-step, 0),
        ArrowUp: () => this.pan(0, step),
        ArrowDown: () => this.pan(0, -step),
        "+": () => this.zoom(1.25),
        ";": () => this.zoom(1.25),
        "-": () => this.zoom(0.8),
        0: () => this.fit(),
        Enter: () => this.press(canvas.clientWidth / 2, canvas.clientHeight / 2),
      };
      if (actions[event.key] && !event.ctrlKey && !event.metaKey) {
        event.preventDefault();
        actions[event.key]();
      }
    });
  }

  press(px, py) {
    if (this.measuring) {
      this.measuring.push(this.world(px, py));
      this.onMeasure(this.measuring);
      this.draw();
      return;
    }
    const found = this.pick(px, py);
    this.select(found);
    this.onPick(found);
  }
}
