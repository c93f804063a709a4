// Drives fenmark.html in a headless Chromium or Firefox (FENMARK_BROWSER=firefox): files chosen and dropped, kinds ticked,
// objects and errors clicked, every download compared with what the native program writes.
//
// node test_page.mjs FENMARK PAGE SOURCE [PICTURES], a folder for pictures of the page, with FENMARK_DRIVER the folder that
// holds puppeteer-core.
import assert from "node:assert/strict";
import { spawnSync } from "node:child_process";
import { existsSync, mkdirSync, mkdtempSync, readFileSync, rmSync, statSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { tmpdir } from "node:os";
import { basename, join } from "node:path";
import { pathToFileURL } from "node:url";

const [native, html, source, pictures] = process.argv.slice(2);
const puppeteer = createRequire(join(process.env.FENMARK_DRIVER, "package.json"))("puppeteer-core");
const kPatience = 90_000; // milliseconds; only a hang lasts so long
const kMostBytes = 3_000_000;

const folder = mkdtempSync(join(tmpdir(), "fenmark-web-"));
const downloads = join(folder, "downloads");
const mirror = join(folder, "native");
for (const part of [downloads, mirror, join(mirror, "out"), join(mirror, "export"), join(mirror, "logs"), join(mirror, "in0")]) {
  mkdirSync(part, { recursive: true });
}

let count = 0;
async function check(title, body) {
  try {
    await body();
    ++count;
    console.log(`ok    ${title}`);
  } catch (error) {
    console.error(`FAIL  ${title}`);
    throw error;
  }
}

const run = (...words) => spawnSync(native, words, { cwd: mirror, encoding: "utf8", maxBuffer: 1 << 28 });
const done = (...words) => {
  const result = run(...words);
  assert.equal(result.status, 0, `${words.join(" ")}: ${result.stderr}`);
  return result;
};

const isFirefox = process.env.FENMARK_BROWSER === "firefox";
const browser = await puppeteer.launch(isFirefox ? {
  browser: "firefox",
  executablePath: process.env.FENMARK_FIREFOX ?? "/usr/bin/firefox-esr",
  headless: true,
  protocolTimeout: kPatience,
  timeout: kPatience,
  extraPrefsFirefox: {
    "browser.download.folderList": 2, "browser.download.dir": downloads, "browser.download.useDownloadDir": true,
    "browser.download.alwaysOpenPanel": false, "browser.download.always_ask_before_handling_new_types": false,
    // Files that the browser would show go to the folder too.
    "browser.download.open_pdf_attachments_inline": false, "browser.download.improvements_to_download_panel": true,
  },
} : {
  executablePath: process.env.FENMARK_CHROMIUM ?? "/usr/bin/chromium",
  headless: true,
  protocolTimeout: kPatience,
  userDataDir: join(folder, "profile"),
  args: ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-background-networking", "--disable-component-update", "--disable-sync", "--lang=ja"],
});
const requests = [];
const complaints = [];

async function opened(acceptLanguage) {
  const page = await browser.newPage();
  page.setDefaultTimeout(kPatience);
  page.on("request", (request) => requests.push(request.url()));
  page.on("pageerror", (error) => complaints.push(String(error)));
  page.on("console", (message) => message.type() === "error" && complaints.push(message.text()));
  page.on("dialog", (dialog) => {
    complaints.push(`dialog: ${dialog.message()}`);
    dialog.dismiss();
  });
  await page.setViewport({ width: 1200, height: 1400 });
  await page.evaluateOnNewDocument((value) => Object.defineProperty(navigator, "language", { get: () => value }), acceptLanguage);
  if (!isFirefox) {
    const session = await page.createCDPSession();
    await session.send("Browser.setDownloadBehavior", { behavior: "allow", downloadPath: downloads });
  }
  await page.goto(pathToFileURL(html).href);
  await page.waitForSelector("body[data-ready]");
  return page;
}
const idle = (page) => page.waitForFunction("!working && !document.body.hasAttribute('aria-busy')");
const status = (page) => page.$eval("#status", (element) => ({ text: element.textContent, wrong: element.classList.contains("wrong") }));
const click = (page, selector) => page.$eval(selector, (element) => element.click());

async function choose(page, ...files) {
  await page.evaluate("tell('not taken yet')");
  await (await page.$("#input")).uploadFile(...files);
  await page.waitForFunction("document.getElementById('status').textContent !== 'not taken yet'");
  await idle(page);
}
async function imported(page) {
  await click(page, "#run");
  await idle(page);
}
async function saved(page, selector, name) {
  const path = join(downloads, name);
  rmSync(path, { force: true });
  await click(page, selector);
  await idle(page);
  const { text, wrong } = await status(page);
  assert.ok(!wrong, text);
  const end = Date.now() + kPatience;
  while (!existsSync(path) || existsSync(path + ".crdownload") || existsSync(path + ".part") || statSync(path).size === 0) {
    assert.ok(Date.now() < end, `${name} was not downloaded`);
    await new Promise((resolve) => setTimeout(resolve, 50));
  }
  return path;
}
function compare(ours, theirs) {
  const result = spawnSync("python3", [join(source, "tests/web/compare.py"), ours, theirs], { encoding: "utf8" });
  assert.equal(result.status, 0, result.stdout + result.stderr);
  console.log(`      ${basename(ours)}: ${result.stdout.trim()}`);
}

const road = join(source, "examples/road.sim");
const dirty = join(source, "examples/dirty.sim");
try {
  await check("the page is one file of at most 3 MB", () => assert.ok(statSync(html).size <= kMostBytes));

  const page = await opened("ja-JP");
  await check("a Japanese browser gets a Japanese page that says that nothing leaves the machine", async () => {
    assert.equal(await page.$eval("html", (element) => element.lang), "ja");
    assert.match(await page.$eval("#privacy", (element) => element.textContent), /外部に送信されません/);
  });

  await check("a chosen file is counted as the native program counts it", async () => {
    await choose(page, road);
    const counts = await page.$$eval("#kinds-tree label", (labels) => labels.map((label) => Number(label.textContent.match(/\[(\d+)\]/)[1])));
    const json = JSON.parse(done("preview", "--json", road).stdout);
    assert.deepEqual(counts, [json.coordinates, json.lots, ...json.routes, json.longitudinal, json.cross_sections]);
  });

  await check("an import makes the drawing and the log of the native program", async () => {
    await page.select("#zone", "9");
    await imported(page);
    const { text, wrong } = await status(page);
    assert.ok(!wrong, text);
    writeFileSync(join(mirror, "in0/road.sim"), readFileSync(road));
    const result = done("import", "--drawing", "out/road.gpkg", "--zone", "9", "--create-layers", "in0/road.sim");
    assert.ok(text.includes(result.stdout.trim()), text);
    compare(await saved(page, "#download-gpkg", "road.gpkg"), join(mirror, "out/road.gpkg"));
    compare(await saved(page, "#download-log-0", "road_Input.log"), join(mirror, "in0/road_Input.log"));
  });

  const exportsOf = [
    ["dxf", ".dxf"], ["landxml", ".xml"], ["j-landxml", "_J.xml", "--profile", "j-landxml"], ["geojson", ".geojson"],
    ["geojson-plane", "_plane.geojson", "--crs", "plane"], ["kml", ".kml"], ["csv", ".csv"], ["sim", "_out.sim"],
  ];
  for (const [id, extension, ...options] of exportsOf) {
    await check(`the download ${id} is what the native export writes`, async () => {
      const ours = await saved(page, `#download-${id}`, `road${extension}`);
      done("export", ...options, "out/road.gpkg", `export/road${extension}`);
      compare(ours, join(mirror, `export/road${extension}`));
    });
  }
  await check("the plan as SVG and both reports are what the native program writes", async () => {
    const plan = await saved(page, "#download-svg", "road.svg");
    done("plot", "out/road.gpkg", "export/road.svg");
    compare(plan, join(mirror, "export/road.svg"));
    writeFileSync(join(mirror, "logs/road_Input.log"), readFileSync(join(mirror, "in0/road_Input.log")));
    for (const [id, name] of [["report", "road.html"], ["report-csv", "road_report.csv"]]) {
      const ours = await saved(page, `#download-${id}`, name);
      done("report", "--log", "logs/road_Input.log", "out/road.gpkg", `export/${name}`);
      compare(ours, join(mirror, `export/${name}`));
    }
  });
  await check("a stake-out list is shown, and saved as the native program writes it", async () => {
    await page.$eval("#offsets", (element) => (element.value = "-5,0,5"));
    await click(page, "#stakes-form button[type=submit]");
    await idle(page);
    const alignment = await page.$eval("#stake-alignment", (element) => element.value);
    const words = ["--every=20", "--offset=-5,0,5", "--main-points"];
    const stakes = JSON.parse(done("stakes", "--format", "json", ...words, "out/road.gpkg", alignment).stdout).stakes;
    assert.equal(await page.$$eval("#stakes tbody tr", (lines) => lines.length), stakes.length);
    assert.equal(await page.$eval("#stakes tbody td", (cell) => cell.textContent), stakes[0].name);
    for (const format of ["csv", "sim"]) {
      const ours = await saved(page, `#stakes-${format}`, `road_stakes.${format}`);
      done("stakes", "--format", format, "--out", `export/road_stakes.${format}`, ...words, "out/road.gpkg", alignment);
      compare(ours, join(mirror, `export/road_stakes.${format}`));
    }
  });
  await check("elements and lots stand in tables", async () => {
    const info = JSON.parse(done("info", "--json", "out/road.gpkg").stdout);
    const elements = info.sites.flatMap((site) => site.alignments.flatMap((alignment) => alignment.elements));
    assert.equal(await page.$$eval("#elements tbody tr", (lines) => lines.length), elements.length);
    assert.equal(await page.$$eval("#lots tbody tr", (lines) => lines.length), 5);
  });

  await check("a click on the plan shows the row and the line of the file of what lies there", async () => {
    await page.$eval("#plan", (element) => element.scrollIntoView());
    const target = await page.evaluate(`(() => {
      const object = objects.find((o) => o.kind === "座標");
      plan.frame({ minX: object.box.minX - 3, minY: object.box.minY - 3, maxX: object.box.maxX + 3, maxY: object.box.maxY + 3 }, 1);
      const [px, py] = plan.pixel(...object.points[0]);
      const box = plan.canvas.getBoundingClientRect();
      return { x: box.left + px, y: box.top + py };
    })()`);
    await page.mouse.move(target.x, target.y);
    await page.mouse.click(target.x, target.y);
    const chosen = await page.evaluate("plan.selected && { name: plan.selected.name, kind: plan.selected.kind, no: plan.selected.properties.No }");
    assert.ok(chosen, "nothing was hit");
    await page.waitForSelector("#object :is(pre, p)"); // its lines, or that there are none
    const panel = await page.$eval("#object", (element) => element.textContent);
    assert.ok(panel.includes(chosen.name) && panel.includes(chosen.kind), panel);
    assert.match(panel, chosen.kind === "座標" ? /A01/ : /./);
  });
  await check("station and offset under the pointer are those of the native program", async () => {
    await page.waitForFunction("document.getElementById('located').textContent !== ''");
    const text = await page.$eval("#located", (element) => element.textContent);
    const [station, offset] = text.match(/-?\d+\.\d{3}/g).map(Number);
    const alignment = await page.$eval("#pointer-alignment", (element) => element.value);
    const [y, x] = (await page.$eval("#position", (element) => element.textContent)).match(/-?\d+\.\d{3}/g);
    const at = JSON.parse(done("locate", "--json", "out/road.gpkg", alignment, x, y).stdout);
    assert.ok(Math.abs(at.station - station) < 0.002 && Math.abs(at.offset - offset) < 0.002, `${text} against ${JSON.stringify(at)}`);
  });
  await check("the plan answers to keys", async () => {
    await page.focus("#plan");
    const before = await page.evaluate("[plan.scale, plan.x]");
    await page.keyboard.press("+");
    await page.keyboard.press("ArrowRight");
    const after = await page.evaluate("[plan.scale, plan.x]");
    assert.ok(after[0] > before[0] && after[1] > before[1]);
    await page.keyboard.press("0");
  });
  const painted = () => page.evaluate("new Promise((r) => requestAnimationFrame(() => requestAnimationFrame(r)))");
  async function pictured(name, options = {}) {
    if (pictures) {
      await page.evaluate("plan.fit(); plan.reveal(objects.find((object) => object.ring)); showObject(plan.selected); tell(''); window.scrollTo(0, 0); document.activeElement.blur()");
      await page.evaluate("new Promise((r) => setTimeout(r, 2 * kRest))"); // a plan that was moved is painted after a rest
      await painted();
      await page.screenshot({ path: join(pictures, name), ...options });
    }
  }
  await pictured("web.png");

  // Only Chromium can be switched while it runs.
  for (const scheme of isFirefox ? [] : ["light", "dark"]) {
    await check(`every text stands out from what lies behind it when the browser is ${scheme}`, async () => {
      await page.emulateMediaFeatures([{ name: "prefers-color-scheme", value: scheme }]);
      await painted();
      const poor = await page.evaluate(() => {
        const luminance = ([r, g, b]) => [r, g, b].map((c) => c / 255).map((c) => (c <= 0.04045 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4))
          .reduce((sum, c, i) => sum + c * [0.2126, 0.7152, 0.0722][i], 0);
        const numbers = (color) => color.match(/[\d.]+/g).map(Number);
        const behind = (element) => {
          for (let at = element; at; at = at.parentElement) {
            const color = numbers(getComputedStyle(at).backgroundColor);
            if (color.length === 3 || color[3] > 0) {
              return color;
            }
          }
          return [255, 255, 255];
        };
        return [...document.body.querySelectorAll("*")]
          .filter((element) => element.checkVisibility() && [...element.childNodes].some((node) => node.nodeType === Node.TEXT_NODE && node.textContent.trim()))
          .filter((element) => !element.closest(":disabled") && !element.closest(".none"))
          .map((element) => {
            const [a, b] = [luminance(numbers(getComputedStyle(element).color)), luminance(behind(element))].sort((x, y) => y - x);
            return { text: element.textContent.slice(0, 40), ratio: (a + 0.05) / (b + 0.05) };
          })
          .filter(({ ratio }) => ratio < 4.5); // what the guidelines for web content ask of small text
      });
      assert.deepEqual(poor, []);
      const body = await page.evaluate("getComputedStyle(document.body).backgroundColor");
      assert.equal(body.match(/\d+/g).every((c) => Number(c) < 64), scheme === "dark", body);
    });
  }
  if (!isFirefox) {
    await pictured("web_dark.png");
    await page.emulateMediaFeatures([]);
  }

  await check("the page fits a screen of 360 px", async () => {
    await page.setViewport({ width: 360, height: 740 });
    await painted();
    assert.ok((await page.evaluate("document.documentElement.scrollWidth")) <= 360);
    await pictured("web_narrow.png", { fullPage: true });
    await page.setViewport({ width: 1200, height: 1400 });
  });

  const second = await opened("en-US");
  await check("another browser gets an English page", async () => {
    assert.equal(await second.$eval("html", (element) => element.lang), "en");
    assert.match(await second.$eval("#privacy", (element) => element.textContent), /Nothing leaves your machine/);
  });
  await check("a dropped file with errors shows them first, and a click leads to the line", async () => {
    await second.evaluate((base64) => {
      const transfer = new DataTransfer();
      transfer.items.add(new File([Uint8Array.from(atob(base64), (c) => c.charCodeAt(0))], "dirty.sim"));
      document.getElementById("drop").dispatchEvent(new DragEvent("drop", { bubbles: true, cancelable: true, dataTransfer: transfer }));
    }, readFileSync(dirty).toString("base64"));
    await second.waitForFunction("inputs.length === 1 && !working");
    await imported(second);
    writeFileSync(join(mirror, "in0/dirty.sim"), readFileSync(dirty));
    const expected = done("import", "--drawing", "out/dirty.gpkg", "--create-layers", "in0/dirty.sim").stderr.split("\n").filter((line) => /^in0\/dirty\.sim:\d+: /.test(line));
    const shown = await second.$$eval("#messages .error", (items) => items.map((item) => item.textContent));
    assert.deepEqual(shown, expected.map((line) => line.slice("in0/".length)));
    assert.equal(await second.$eval("#messages li", (item) => item.className), "error");
    await second.$$eval("#messages .error button", (buttons) => buttons[4].click());
    const line = shown[4].match(/:(\d+):/)[1];
    await second.waitForFunction((number) => document.querySelector("#source .chosen .number")?.textContent === number, {}, line);
  });
  await check("kinds that are not ticked are not imported", async () => {
    await choose(second, road);
    await second.$eval("#kinds-tree input[name=points]", (box) => box.click());
    await imported(second);
    writeFileSync(join(mirror, "in0/road.sim"), readFileSync(road));
    rmSync(join(mirror, "out/part.gpkg"), { force: true });
    done("import", "--drawing", "out/part.gpkg", "--skip", "points", "in0/road.sim");
    const ours = await saved(second, "#download-gpkg", "road.gpkg");
    compare(ours, join(mirror, "out/part.gpkg"));
    assert.equal(await second.evaluate("objects.filter((object) => object.kind === '座標').length"), 0);
  });
  await check("a file in UTF-16 is read by its bytes, and its lines are shown", async () => {
    const path = join(folder, "wide.sim");
    const text = ["G00,03,wide,", "A00,", "A01,1,測点一,10,20,0,", "A01,x,誤り,1,1,1,", "A99,", ""].join("\r\n");
    writeFileSync(path, Buffer.concat([Buffer.from([0xff, 0xfe]), Buffer.from(text, "utf16le")]));
    await choose(second, path);
    await imported(second);
    const { text: reported, wrong } = await status(second);
    assert.ok(!wrong, reported);
    assert.ok(await second.evaluate("objects.some((object) => object.name === '測点一')"));
    await second.$$eval("#messages .error button", (buttons) => buttons[0].click());
    await second.waitForFunction("/誤り/.test(document.querySelector('#source .chosen')?.textContent)");
    await choose(second, road);
    await imported(second);
  });
  await check("without a zone an export in degrees is refused with the native program's reason", async () => {
    await click(second, "#download-kml");
    await idle(second);
    const { text, wrong } = await status(second);
    assert.ok(wrong && text.includes("plane rectangular zone"), text);
  });
  await check("an existing drawing opens, and is exported as the native program does", async () => {
    await choose(second, join(mirror, "out/road.gpkg"));
    await second.waitForFunction("drawing && objects.some((object) => object.kind === '座標') && !working");
    const ours = await saved(second, "#download-dxf", "road.dxf");
    compare(ours, join(mirror, "export/road.dxf"));
  });
  await check("a file that is no drawing is refused, and the open drawing stays", async () => {
    const wrong = join(folder, "wrong.gpkg");
    writeFileSync(wrong, "not a drawing");
    const before = await second.evaluate("objects.length");
    await choose(second, wrong);
    assert.ok((await status(second)).wrong);
    assert.equal(await second.evaluate("objects.length"), before);
    compare(await saved(second, "#download-dxf", "road.dxf"), join(mirror, "export/road.dxf"));
  });
  await check("a cancelled import leaves the drawing, which can still be exported", async () => {
    const large = join(folder, "large.sim");
    const lines = ["G00,03,large,", "Z00,points,", "A00,"];
    for (let i = 0; i < 99_999; ++i) {
      lines.push(`A01,${i + 1},P${i},${(i * 0.37).toFixed(3)},${(i * 0.11).toFixed(3)},1.000,`);
    }
    writeFileSync(large, [...lines, "A99,"].join("\r\n") + "\r\n");
    await choose(second, large);
    const before = await second.evaluate("objects.length");
    const cancels = [
      "document.getElementById('run').click(); document.getElementById('cancel').click();", // before the worker has it
      `new MutationObserver((changes, observer) => {
         if (document.getElementById("progress").hasAttribute("value")) {
           observer.disconnect();
           document.getElementById("cancel").click();
         }
       }).observe(document.getElementById("progress"), { attributes: true });
       document.getElementById("run").click();`, // while it runs
    ];
    for (const cancel of cancels) {
      await second.evaluate(cancel);
      await idle(second);
      assert.match((await status(second)).text, /Cancelled/);
      assert.equal(await second.evaluate("objects.length"), before);
    }
    compare(await saved(second, "#download-dxf", "road.dxf"), join(mirror, "export/road.dxf"));
  });
  await check("a file of some megabytes is imported", async () => {
    await imported(second);
    const { text, wrong } = await status(second);
    assert.ok(!wrong, text);
    assert.equal(await second.evaluate("objects.length"), 99_999);
    await second.evaluate("showObject(objects.at(-1))");
    await second.waitForSelector("#object pre");
    const name = await second.evaluate("objects.at(-1).name");
    assert.equal((await second.$eval("#object pre", (element) => element.textContent)).split(",")[2], name);
  });
  await check("lines are found across the blocks in which a file is read", async () => {
    const differ = await second.evaluate(async () => {
      const long = kBlock - 1;
      const files = [
        "", "\n", "a", "a\rb\r\nc\n\nd", `${"a".repeat(long)}\r\nb\rc`, `${"a".repeat(long)}\rb\n`, `${"a".repeat(kBlock)}\n`,
        `x\n${"y".repeat(5 * kBlock)}\r\nz`, `${"座標,1\r\n".repeat(kBlock / 4)}end`,
      ];
      const differ = [];
      for (const [i, text] of files.entries()) {
        const lines = await Lines.of(new Blob([text]), "utf-8");
        const expected = text.split(/\r\n|\r|\n/);
        const found = await lines.texts(1, lines.count + 5);
        const last = await lines.find(expected.at(-1), undefined, expected.length);
        if (lines.count !== expected.length || found.join("|") !== expected.join("|") || last !== expected.length) {
          differ.push(i);
        }
      }
      return differ;
    });
    assert.deepEqual(differ, []);
  });
  await check("hostile names stay text", async () => {
    const hostile = "<img src=x onerror=hacked=1>";
    const path = join(folder, `${hostile.replaceAll("/", "")}.sim`);
    writeFileSync(path, ["G00,03,x,", "A00,", `A01,1,${hostile},0,0,0,`, `A01,2,</script><b>b</b>,10,0,0,`, "A01,3,c,10,10,0,", "A01,x,<i>,1,1,1,", "A99,",
      `D00,1,${hostile},1,`, "B01,1,,", "B01,2,,", "B01,3,,", "D99,", ""].join("\r\n"));
    await choose(second, path);
    await imported(second);
    const { text, wrong } = await status(second);
    assert.ok(!wrong, text);
    await second.evaluate("showObject(objects.find((object) => object.ring))");
    await second.evaluate("new Promise((r) => setTimeout(r, 200))");
    assert.ok((await second.$eval("#object", (element) => element.textContent)).includes(hostile));
    assert.equal(await second.evaluate("typeof hacked"), "undefined");
    assert.ok(await second.evaluate("['constructor', '__proto__', ''].every((type) => kindOf(type) === kOtherKind)"));
    assert.equal(await second.$$eval("img, b, i", (elements) => elements.length), 0);
  });
  await check("stations and names far out of view are passed over", async () => {
    const drawn = await second.evaluate(() => {
      const before = plan.stations;
      const fillText = plan.context.fillText;
      const drawn = [];
      plan.context.fillText = (text) => drawn.push(text);
      plan.showStations = true;
      plan.stations = [{ text: "far", x: 1e20, y: 1e20 }, { text: "here", x: plan.x, y: plan.y }];
      plan.paintLabels([], "#000");
      plan.stations = before;
      plan.context.fillText = fillText;
      return drawn;
    });
    assert.deepEqual(drawn, ["here"]);
  });
  await check("nothing was asked for beside the page itself, and no script failed", () => {
    assert.deepEqual(requests.filter((url) => !url.startsWith("blob:") && !url.startsWith("data:") && url !== pathToFileURL(html).href), []);
    assert.deepEqual(complaints, []);
  });
  console.log(`${count} checks passed in ${await browser.version()}`);
} finally {
  await browser.close();
  rmSync(folder, { recursive: true, force: true });
}
