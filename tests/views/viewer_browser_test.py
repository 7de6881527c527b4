#!/usr/bin/python3
"""The diagram viewer (the HTML page of qvdiag build and qvdiag render) in a real browser.

    viewer_browser_test.py --qvdiag BUILD/qvdiag --source-dir REPO --out-dir DIR

Debian's chromium, headless, driven through chromium-driver by python3-selenium (scripts/deps),
opens the pages from disk as a person would. The pages and the screenshots stay in DIR for a
person to look at: viewer_example.png (the example, its side panel open on a compute unit) and
viewer_64.png (64 compute units on 36 banks over 3 SLRs).
"""
import argparse
import json
import os
import shutil
import subprocess
import sys
import time
import unittest

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.ui import WebDriverWait

ARGS = None
FIXED_STAMP = "Mon Nov 23 09:00:00 2026"


def run(*arguments, cwd=None):
    return subprocess.run([ARGS.qvdiag] + list(arguments), stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, text=True, timeout=120, cwd=cwd)


def synthetic_diagram(units, slrs=3, hbm=32, ddr=4, ports=4):
    """A stored diagram of `units` compute units, each with `ports` memory ports, on `hbm` HBM
    and `ddr` DDR4 banks over `slrs` SLRs, every bank in use."""
    banks = hbm + ddr
    topology = []
    for bank in range(banks):
        is_hbm = bank < hbm
        index = bank if is_hbm else bank - hbm
        topology.append({
            "id": str(bank), "used": "yes", "size_kb": "262144" if is_hbm else "16777216",
            "base_address": hex(bank << 28), "tag": ("HBM[%d]" if is_hbm else "DDR[%d]") % index,
            "slr": "SLR0" if is_hbm else "SLR%d" % (index % slrs),
            "sp_tag": "", "type": "MEM_HBM" if is_hbm else "MEM_DDR4"})
    compute_units = []
    connectivity = []
    for unit in range(units):
        kernel = "krnl_%d" % (unit % 8)
        compute_units.append({
            "id": str(unit), "kernel_name": kernel, "name": "%s_%d" % (kernel, unit // 8 + 1),
            "base_address": hex(0x1800000 + unit * 0x10000),
            "clock_refs": [{"name": "ap_clk", "clock_id": "0", "requested_frequency": 300,
                            "achieved_frequency": 275.5}],
            "slr_resources": [{"slr": "SLR%d" % (unit % slrs), "utilization": [
                {"resource": "LUT", "used": "3000", "available": "400000"}]}],
            "actual_resources": [{"lut": str(3000 + unit), "reg": "5000", "bram": "4",
                                  "dsp": "2", "uram": "0",
                                  "design_state": "DESIGN_STATE_ROUTED"}]})
        for port in range(ports):
            connectivity.append({
                "id": str(len(connectivity)),
                "source": {"type": "compute_unit", "id": str(unit), "arg_name": "m%d" % port},
                "destination": {"type": "memory", "id": str((unit * ports + port) % banks)}})
    return {"system_diagram_metadata": {
        "qsa": {"name": "synthetic_card", "device_topology": topology,
                "clocks": [{"name": "clk_kernel_00", "id": 0, "frequency": 300}]},
        "qrxbin": {"generated_by": {"label": "synthetic_%d" % units}, "user_regions": [{
            "kernels": [{"name": "krnl_%d" % k} for k in range(8)],
            "compute_units": compute_units, "connectivity": connectivity,
            "available_resources": {"by_slr": [
                {"slr": "SLR%d" % s, "lut": "400000", "reg": "800000", "bram": "700",
                 "dsp": "3000", "uram": "320"} for s in range(slrs)]}}]}}}


class ViewerInBrowserTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        os.makedirs(ARGS.out_dir, exist_ok=True)
        options = webdriver.ChromeOptions()
        options.binary_location = shutil.which("chromium") or "/usr/bin/chromium"
        for argument in ("--headless=new", "--window-size=1600,1000", "--disable-gpu",
                         "--disable-dev-shm-usage", "--no-first-run",
                         "--disable-background-networking", "--disable-extensions",
                         # CI containers run as root, where chromium refuses its sandbox.
                         "--no-sandbox"):
            options.add_argument(argument)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
        driver = shutil.which("chromedriver") or "/usr/bin/chromedriver"
        cls.browser = webdriver.Chrome(service=Service(executable_path=driver), options=options)
        cls.browser.set_page_load_timeout(60)

    @classmethod
    def tearDownClass(cls):
        cls.browser.quit()

    def open(self, page):
        self.browser.get("file://" + os.path.abspath(page))
        WebDriverWait(self.browser, 30).until(
            lambda browser: browser.execute_script("return document.readyState") == "complete")

    def console_errors(self):
        return [entry for entry in self.browser.get_log("browser")
                if entry["level"] in ("SEVERE", "ERROR")]

    def node(self, node_id):
        return self.browser.find_element(By.ID, node_id)

    def classes(self, node_id):
        return self.node(node_id).get_attribute("class").split()

    def find(self, text):
        search = self.browser.find_element(By.ID, "search")
        search.clear()
        search.send_keys(text)
        search.send_keys(Keys.ENTER)
        return self.browser.find_element(By.ID, "search-result").text

    def panel_text(self, element_id):
        return self.browser.find_element(By.ID, element_id).text

    def test_example_page_from_qvdiag_build(self):
        out = os.path.join(ARGS.out_dir, "example")
        shutil.rmtree(out, ignore_errors=True)
        design = os.path.join(ARGS.source_dir, "examples", "design")
        result = run("build", "--rtd", "vector_pipeline.rtd.json",
                     "--platform", "qv_accel_h2_gen3x16", "--platform-path", "../platforms",
                     "--requests", "vector_pipeline.requests.json",
                     "--after-impl-rtd", "vector_pipeline.post_impl.rtd.json",
                     "--utilization", "vector_pipeline.synth.util.json",
                     "--utilization", "vector_pipeline.place.util.json",
                     "--utilization", "vector_pipeline.route.util.json",
                     "--out-dir", out, "--timestamp", FIXED_STAMP, cwd=design)
        self.assertEqual(result.returncode, 0, result.stderr)
        with open(os.path.join(out, "system_diagram.json")) as f:
            regions = json.load(f)["system_diagram_metadata"]["qrxbin"]["user_regions"]
        units = [unit for region in regions for unit in region["compute_units"]]

        self.open(os.path.join(out, "system_diagram.html"))
        self.assertEqual(self.console_errors(), [])
        self.assertEqual(self.browser.title,
                         "vector_pipeline on qv_accel_h2_gen3x16 - system diagram")
        self.assertEqual(self.browser.find_element(By.ID, "cu-count").text, str(len(units)))
        drawn = self.browser.find_elements(By.CSS_SELECTOR, "#view svg g.node.cu")
        self.assertEqual(sorted(element.get_attribute("id") for element in drawn),
                         sorted("cu:" + unit["name"] for unit in units))
        self.assertTrue(self.browser.find_element(By.ID, "legend").is_displayed())

        # The search highlights the one compute unit named, and nothing else.
        self.assertEqual(self.find("mmult_2"), "1 match: mmult_2")
        self.assertIn("hit", self.classes("cu:mmult_2"))
        self.assertEqual([element.get_attribute("id") for element in
                          self.browser.find_elements(By.CSS_SELECTOR, "#view g.node.hit")],
                         ["cu:mmult_2"])
        self.assertEqual(self.find("HBM[3"), "2 matches")
        self.assertEqual(self.find("nothing like it"), "no match")

        # A click opens the side panel with the compute unit's own values.
        self.assertEqual(self.find("producer_1"), "1 match: producer_1")
        self.node("cu:producer_1").click()
        panel = self.browser.find_element(By.ID, "panel")
        self.assertTrue(panel.is_displayed())
        self.assertIn("selected", self.classes("cu:producer_1"))
        self.assertEqual(self.panel_text("panel-kernel"), "producer")
        self.assertEqual(self.panel_text("panel-base-address"), "0x1c40000")
        self.assertEqual(self.panel_text("panel-slr"), "SLR0")
        achieved = panel.find_elements(By.CSS_SELECTOR, "td.achieved")
        self.assertEqual([cell.text for cell in achieved], ["450.00 MHz"])
        requested = panel.find_elements(By.CSS_SELECTOR, "td.requested")
        self.assertEqual([cell.text for cell in requested], ["500.00 MHz"])
        body = panel.text
        self.assertIn("in \u2192 HBM[6] (HBM, SLR0)", body)
        self.assertIn("stream out -> in to consumer_1", body)
        self.assertIn("Routed 1394\n0.38%", body)

        # The whole picture with the panel open and a tooltip, for a person to judge.
        self.find("")
        self.browser.find_element(By.ID, "zoom-fit").click()
        webdriver.ActionChains(self.browser).move_to_element(self.node("cu:vadd_2")).perform()
        tooltip = self.browser.find_element(By.ID, "tooltip")
        self.assertTrue(tooltip.is_displayed())
        self.assertTrue(tooltip.text.startswith("Compute unit vadd_2\nkernel vadd, base "
                                                "0x1c10000\nSLR SLR1"), tooltip.text)
        webdriver.ActionChains(self.browser).move_to_element(
            self.node("mem:HBM[8..31]")).perform()
        self.assertEqual(tooltip.text, "24 unused HBM banks: HBM[8..31]\nSLR SLR0, 6 GiB")
        shot = os.path.join(ARGS.out_dir, "viewer_example.png")
        self.assertTrue(self.browser.save_screenshot(shot))
        print("\nscreenshot: " + shot, file=sys.stderr)
        self.assertEqual(self.console_errors(), [])

    def test_64_compute_units_on_36_banks_stay_usable(self):
        diagram = os.path.join(ARGS.out_dir, "synthetic_64.json")
        with open(diagram, "w") as f:
            json.dump(synthetic_diagram(64), f)
        page = os.path.join(ARGS.out_dir, "synthetic_64.html")
        started = time.monotonic()
        result = run("render", diagram, "-o", page)
        rendered = time.monotonic() - started
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(result.stdout, "")

        started = time.monotonic()
        self.open(page)
        loaded = time.monotonic() - started
        self.assertEqual(self.console_errors(), [])
        self.assertEqual(self.browser.find_element(By.ID, "cu-count").text, "64")
        self.assertEqual(len(self.browser.find_elements(By.CSS_SELECTOR, "#view g.node.cu")), 64)
        self.assertEqual(len(self.browser.find_elements(By.CSS_SELECTOR, "#view g.node.mem")), 36)
        self.assertEqual(self.find("krnl_3_5"), "1 match: krnl_3_5")
        self.node("cu:krnl_3_5").click()
        self.assertEqual(self.panel_text("panel-base-address"), hex(0x1800000 + 35 * 0x10000))
        self.assertEqual([cell.text for cell in self.browser.find_elements(
            By.CSS_SELECTOR, "#panel td.achieved")], ["275.50 MHz"])
        # The neighbourhood of the compute unit with its panel: the whole picture of 64 compute
        # units is a tall column, which a screenshot of the window would shrink to a thread.
        shot = os.path.join(ARGS.out_dir, "viewer_64.png")
        self.assertTrue(self.browser.save_screenshot(shot))
        print("\n64 compute units: rendered in %.2f s, page loaded in %.2f s; screenshot: %s"
              % (rendered, loaded, shot), file=sys.stderr)
        self.assertEqual(self.console_errors(), [])


def main():
    global ARGS
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--qvdiag", required=True)
    parser.add_argument("--source-dir", required=True)
    parser.add_argument("--out-dir", required=True)
    ARGS, rest = parser.parse_known_args()
    # The example's build runs in its design folder.
    ARGS.qvdiag = os.path.abspath(ARGS.qvdiag)
    ARGS.source_dir = os.path.abspath(ARGS.source_dir)
    ARGS.out_dir = os.path.abspath(ARGS.out_dir)
    unittest.main(argv=[sys.argv[0]] + rest, verbosity=2)


if __name__ == "__main__":
    main()
