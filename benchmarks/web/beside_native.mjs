// Imports one large file with the native program and in fenmark.html, and prints processor time, elapsed time and the
// greatest memory of both, side by side; then cancels a second import and prints how long the page took to answer.
//
// node beside_native.mjs FENMARK GENERATE_SIMA PAGE [POINTS LOTS], with FENMARK_DRIVER the folder that holds puppeteer-core.
import { spawnSync } from "node:child_process";
import { mkdtempSync, readFileSync, readdirSync, rmSync, statSync } from "node:fs";
import { createRequire } from "node:module";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { pathToFileURL } from "node:url";

const [native, generator, html, points = "1000000", lots = "250000"] = process.argv.slice(2);
const puppeteer = createRequire(join(process.env.FENMARK_DRIVER, "package.json"))("puppeteer-core");
const kPatience = 1_200_000; // milliseconds
const kTicks = Number(spawnSync("getconf", ["CLK_TCK"], { encoding: "utf8" }).stdout); // a second

const folder = mkdtempSync(join(tmpdir(), "fenmark-web-"));
const file = join(folder, "large.sim");
const made = spawnSync(generator, ["--points", points, "--lots", lots, file], { encoding: "utf8" });
if (made.status !== 0) {
  throw new Error(made.stderr);
}
console.log(`file        ${(statSync(file).size / 1e6).toFixed(1)} MB`);

const begun = Date.now();
const timed = spawnSync("bash", ["-c", 'TIMEFORMAT="%U %S"; time "$0" import --quiet "$1" >/dev/null', native, file], { encoding: "utf8" });
const [user, system] = timed.stderr.trim().split("\n").at(-1).split(" ").map(Number);
const nativeSeconds = user + system;
console.log(`native      ${nativeSeconds.toFixed(1)} s processor, ${((Date.now() - begun) / 1000).toFixed(1)} s elapsed`);

const browser = await puppeteer.launch({
  executablePath: process.env.FENMARK_CHROMIUM ?? "/usr/bin/chromium",
  headless: true,
  protocolTimeout: kPatience,
  args: ["--no-sandbox", "--disable-gpu", "--no-first-run", "--disable-background-networking", "--lang=en"],
});
// The processes that hold pages, with what they used so far.
function renderers() {
  const of = (pid, name) => readFileSync(`/proc/${pid}/${name}`, "utf8");
  let seconds = 0;
  let peak = 0;
  const family = new Set([browser.process().pid]);
  const pids = readdirSync("/proc").filter((name) => /^\d+$/.test(name)).map(Number).sort((a, b) => a - b);
  for (const pid of pids) {
    try {
      const stat = of(pid, "stat").replace(/^.*\) /, "").split(" ");
      if (!family.has(Number(stat[1]))) {
        continue;
      }
      family.add(pid);
      if (of(pid, "cmdline").includes("--type=renderer")) {
        seconds += (Number(stat[11]) + Number(stat[12])) / kTicks;
        peak = Math.max(peak, Number(of(pid, "status").match(/VmHWM:\s+(\d+) kB/)[1]) / 1024);
      }
    } catch {
      // ended meanwhile
    }
  }
  return { seconds, peak };
}
try {
  const page = await browser.newPage();
  page.setDefaultTimeout(kPatience);
  await page.goto(pathToFileURL(html).href);
  await page.waitForSelector("body[data-ready]");
  const idle = () => page.waitForFunction("!working && !document.body.hasAttribute('aria-busy')");
  await (await page.$("#input")).uploadFile(file);
  await page.waitForFunction("inputs.length === 1");
  await idle();
  // The import alone, as the native program does it.
  const first = renderers();
  await page.evaluate("window.kept = showDrawing; window.showDrawing = async () => {}; document.getElementById('run').click();");
  await idle();
  const alone = renderers().seconds - first.seconds;
  console.log(`page        ${alone.toFixed(1)} s processor for the import, all threads`);
  console.log(`ratio       ${(alone / nativeSeconds).toFixed(2)}`);
  await page.evaluate("window.showDrawing = window.kept");
  const before = renderers();
  const started = Date.now();
  await page.evaluate(`window.bars = 0; new MutationObserver(() => ++window.bars).observe(document.getElementById("progress"), { attributes: true });
    document.getElementById("run").click();`);
  await idle();
  const elapsed = (Date.now() - started) / 1000;
  const after = renderers();
  const status = await page.$eval("#status", (element) => element.textContent);
  const seconds = after.seconds - before.seconds;
  console.log(`page        ${seconds.toFixed(1)} s processor until it is drawn, ${elapsed.toFixed(1)} s elapsed`);
  console.log(`memory      ${after.peak.toFixed(0)} MiB at most in one process of the page, the browser's code with it`);
  console.log(`progress    moved ${await page.evaluate("bars")} times; then: ${status.split("\n")[0]}`);
  const gone = await page.evaluate(`new Promise((resolve) => {
    document.getElementById("run").click();
    setTimeout(() => {
      const from = performance.now();
      const wait = () => (working ? setTimeout(wait, 5) : resolve([performance.now() - from, document.getElementById("status").textContent]));
      document.getElementById("cancel").click();
      wait();
    }, 2000);
  })`);
  console.log(`cancel      answered after ${(gone[0] / 1000).toFixed(2)} s: ${gone[1].split("\n")[0]}`);
} finally {
  await browser.close();
  rmSync(folder, { recursive: true, force: true });
}
