// The kinds of objects that the page treats each in its own way, by the text of the rows' column "Type"; all others are
// painted in one colour. A test holds the names to the program's table.
"use strict";

// colour: on light and dark paper. opens, ends: the records of a SIMA file that an object is made of. byName: whether
// the object is found in the file by its name; otherwise by its number.
const kKinds = {
  __proto__: null, // a drawing may hold any text as a type, "constructor" too
  平面線形: { colour: ["#c22a1e", "#ff7a6b"], isAlignment: true },
  画地: { colour: ["#7a5c00", "#d9b64a"], opens: "D00", ends: "D99", isLot: true },
  座標: { colour: ["#1c5fb0", "#6fb0ff"], opens: "A01" },
  縦断成果: { colour: ["#7d3c98", "#c792e0"], opens: "H01", byName: true },
  横断成果: { colour: ["#2c7a4b", "#6fcf97"], opens: "I01", byName: true },
};
const kOtherKind = { colour: ["#4a5560", "#a9b4bf"] };
const kindOf = (type) => kKinds[type] ?? kOtherKind;
