#include "tests/host/qd/qdrepo/RandomRepositoryFile.h"

#include <random>
#include <sstream>
#include <vector>

namespace qvtest {
namespace {

using Words = std::vector<std::string>;

// Names repeat on purpose: two components or functions of one name, an argument name that is
// also a port, a function named like a component. Two hold a quote, one of them the classic
// splice that turns a test into a truth; one holds an ampersand.
Words const kComponents{"plat", "plat", "acc", "acc2", "dm", "ic", "sc", "mon",
                        "adapter", "adaptee", "it's", "x' or '1'='1", "a&b"};
Words const kFunctions{"f0", "f1", "f2", "f1", "k_ocl", "acc", "it's", "x' or '1'='1"};
Words const kPorts{"clk", "clk2", "CPU", "rst", "s_axi", "m_axi_gmem", "M_AXIS", "S_AXIS",
                   "irq", "bram0", "fifo0", "DDR", "HBM", "it's"};
Words const kArguments{"a", "b", "c", "d", "in", "out", "s_axi", "it's"};
Words const kRoots{"r", "r2", "a", "in"};
Words const kTags{"DDR", "HBM", "PLRAM", "MEM", "bank0"};
Words const kInstances{"inst0", "inst1", "cpu", "noc0", "ddr4_0"};
Words const kNumbers{"0", "1", "2", "3", "16", "32", "64", "512", "-1", "7.5", "x", ""};
Words const kOffsets{"0x10", "0x18", "0x0", "16", "zz"};
Words const kTruths{"true", "false", "preferred", "1", ""};

class Writer {
 public:
  explicit Writer(unsigned seed) : random_(seed) {}

  bool chance(int percent) { return static_cast<int>(random_() % 100) < percent; }
  int upTo(int most) { return static_cast<int>(random_() % static_cast<unsigned>(most + 1)); }
  std::string pick(Words const& words) { return words[random_() % words.size()]; }

  // The repository's namespace under its usual prefix, now and then under a second prefix the
  // file also binds to it: XPath reads both the same.
  std::string qd() { return chance(8) ? "q2:" : "qd:"; }

  void open(std::string const& element) {
    open_.push_back(qd());
    out_ << "<" << open_.back() << element;
  }
  void openPlain(std::string const& element) {
    open_.push_back("");
    out_ << "<" << element;
  }
  // Written with `percent` chance; values escaped for an attribute in double quotes.
  void attribute(std::string const& name, std::string const& value, int percent = 80) {
    if (!chance(percent)) return;
    out_ << " " << qd() << name << "=\"" << escaped(value) << "\"";
  }
  void plainAttribute(std::string const& name, std::string const& value, int percent = 85) {
    if (!chance(percent)) return;
    out_ << " " << name << "=\"" << escaped(value) << "\"";
  }
  void endOpen() { out_ << ">"; }
  void endEmpty() {
    out_ << "/>\n";
    open_.pop_back();
  }
  void close(std::string const& element) {
    out_ << "</" << open_.back() << element << ">\n";
    open_.pop_back();
  }
  void raw(std::string const& text) { out_ << text; }
  std::string text() const { return out_.str(); }

 private:
  static std::string escaped(std::string const& value) {
    std::string made;
    for (char c : value) {
      if (c == '&') {
        made += "&amp;";
      } else if (c == '"') {
        made += "&quot;";
      } else if (c == '<') {
        made += "&lt;";
      } else if (c == '\'') {
        // Either spelling means the same quote to XPath.
        made += (value.size() % 2 == 0) ? "&apos;" : "'";
      } else {
        made += c;
      }
    }
    return made;
  }

  std::mt19937 random_;
  std::ostringstream out_;
  Words open_;  // the prefix of each element not yet closed
};

void addressSegments(Writer& w, int count, std::string const& tag) {
  for (int index = 0; index < count; ++index) {
    w.open("addressSegment");
    w.attribute("index", w.chance(85) ? std::to_string(index) : w.pick(kNumbers));
    w.attribute("baseName", tag + "_S" + std::to_string(index));
    w.attribute("name", tag + "_" + std::to_string(index), 60);
    w.attribute("id", "seg" + std::to_string(index), 40);
    w.attribute("slr", "SLR" + std::to_string(w.upTo(2)));
    w.attribute("memoryInstance", w.pick(kInstances));
    w.attribute("auto", w.pick(kTruths), 50);
    w.attribute("maxMasters", w.pick(kNumbers), 60);
    w.attribute("sptag", tag + "_seg" + std::to_string(index), 30);
    w.attribute("instanceRef", w.pick(kInstances), 40);
    w.attribute("interleave", w.pick({"2", "4", "false"}), 30);
    w.attribute("region", w.pick({"DDR_x4", "DDR_x2", "HBM"}), 30);
    w.attribute("readBwUsed", w.pick(kNumbers), 30);
    w.attribute("writeBwUsed", w.pick(kNumbers), 30);
    w.endEmpty();
  }
}

void busInterface(Writer& w, bool platform) {
  std::string const type =
      w.pick({"clock", "reset", "aximm", "axis", "interrupt", "bram", "fifo", "register",
              "axilite", "aximm", "clock"});
  std::string const tag = w.pick(kTags);
  w.open("busInterface");
  w.attribute("name", w.pick(kPorts), 95);
  w.attribute("busTypeRef", type, 90);
  w.attribute("mode", w.pick({"master", "slave", "slave", "monitor"}));
  w.attribute("clockRef", w.pick(kPorts), 70);
  w.attribute("resetRef", w.pick(kPorts), 30);
  w.attribute("dataWidth", w.pick(kNumbers), 60);
  w.attribute("direction", w.pick({"in", "out", "inout"}), 40);
  w.attribute("instanceRef", w.pick(kInstances), 50);
  w.attribute("componentRef", w.pick(kComponents), 40);
  w.attribute("busInterfaceRef",
              w.pick({"S00_AXI", "M00_AXI", "HBM00_AXI", "S_AXI_ACP", "S_AXI_HP0", "s_axi"}), 40);
  w.attribute("memport",
              w.pick({"M_AXI_GP", "S_AXI_ACP", "S_AXI_HP", "S_AXI_HPC", "MIG", "DDR", "memss",
                      "M_AXI_NOC", "M_AXI_DMA"}),
              platform ? 70 : 20);
  bool const ranged = w.chance(40);
  w.attribute("sptag", tag, platform ? 70 : 30);
  w.attribute("cardinality", ranged ? std::to_string(w.upTo(4)) : w.pick(kNumbers), ranged ? 90 : 15);
  w.attribute("slr", "SLR" + std::to_string(w.upTo(2)), 40);
  w.attribute("auto", w.pick(kTruths), 40);
  w.attribute("maxMasters", w.pick(kNumbers), 40);
  w.attribute("hlsname", w.pick(kArguments), 30);
  w.attribute("activeLevel", w.pick({"low", "high", "ACTIVE_LOW"}), 30);
  w.attribute("clkDomain", w.pick({"d0", "d1"}), 30);
  w.attribute("irq", w.pick(kNumbers), 20);
  w.attribute("isrId", w.pick(kNumbers), 20);
  w.attribute("peakMemoryBandwidth", w.pick(kNumbers), 20);
  w.attribute("cacheCoherent", w.pick(kTruths), 20);
  w.attribute("capacity", w.pick(kNumbers), 20);
  w.attribute("memoryInstance", w.pick(kInstances), 20);
  w.attribute("memoryInterface", w.pick(kPorts), 20);
  w.attribute("connectedInstanceRef", w.pick(kInstances), 20);
  w.attribute("hasTlast", w.pick(kTruths), 20);
  w.attribute("dataPack", w.pick(kTruths), 20);
  w.attribute("port", w.pick(kPorts), 20);
  w.attribute("regionSize", w.pick(kNumbers), 20);
  w.attribute("arraySize", w.pick(kNumbers), 20);
  w.attribute("bufferDepth", w.pick(kNumbers), 20);
  w.attribute("numElements", w.pick(kNumbers), 20);
  w.attribute("return", w.pick(kTruths), 10);
  int const segments = ranged || w.chance(20) ? w.upTo(4) : 0;
  int const registers = w.chance(25) ? w.upTo(3) : 0;
  if (segments == 0 && registers == 0) {
    w.endEmpty();
    return;
  }
  w.endOpen();
  addressSegments(w, segments, tag);
  for (int r = 0; r < registers; ++r) {
    w.open("reg");
    w.attribute("name", w.pick(kArguments), 90);
    w.endEmpty();
  }
  w.close("busInterface");
}

void estimates(Writer& w) {
  w.open("resourceEstimates");
  for (char const* resource : {"LUT", "FF", "REG", "BRAM", "URAM", "DSP", "nocPlNmu", "nocPlNsu",
                               "nocAieNmu", "nocAieNsu", "nocHbmNmu", "nocChannelMaxBw"}) {
    w.attribute(resource, w.pick(kNumbers), 50);
  }
  w.endEmpty();
}

void platformInfo(Writer& w) {
  w.open("platformInfo");
  w.endOpen();
  if (w.chance(90)) {
    w.open("systemClocks");
    w.attribute("defaultClock", std::to_string(w.upTo(3)));
    w.endOpen();
    int const clocks = w.upTo(3);
    for (int c = 0; c < clocks; ++c) {
      w.open("clock");
      w.attribute("name", w.chance(30) ? "CPU" : w.pick(kPorts), 95);
      w.attribute("id", w.chance(85) ? std::to_string(c) : w.pick(kNumbers), 90);
      w.attribute("frequency", w.pick({"300.000000", "100.5", "250", "x", ""}));
      w.attribute("status", w.pick({"fixed", "scalable", "other"}));
      w.attribute("instanceRef", w.pick(kInstances), 50);
      w.attribute("componentRef", w.pick(kComponents), 30);
      w.attribute("clkDomain", w.pick({"d0", "d1"}), 30);
      w.attribute("period", w.pick(kNumbers), 30);
      w.attribute("normalizedPeriod", w.pick(kNumbers), 30);
      w.endEmpty();
    }
    w.close("systemClocks");
  }
  if (w.chance(70)) {
    w.open("deviceInfo");
    w.attribute("architecture", w.pick({"versal", "zynquplus", "virtexuplus"}));
    w.attribute("device", w.pick({"xcvc1902", "xczu9eg"}));
    w.attribute("package", w.pick({"vsva2197", "ffvb1156"}));
    w.attribute("speedGrade", w.pick({"-2MP-e-S", "-1-e", "-2-e", "-3"}));
    w.endEmpty();
  }
  w.close("platformInfo");
}

void component(Writer& w, bool platform) {
  std::string const type =
      platform ? "platform"
               : w.pick({"accelerator", "accelerator", "datamover", "monitor", "interconnect",
                         "smartconnect", "axi_interconnect", "axi_noc", "adapter", "other"});
  w.open("component");
  w.attribute("name", platform && w.chance(70) ? "plat" : w.pick(kComponents), 95);
  w.attribute("type", type, 92);
  w.attribute("componentRef", w.pick({"axi_interconnect", "smartconnect", "axi_noc", "axi_noc2",
                                      "axi_dma_sg", "ps_cpu"}),
              40);
  w.attribute("adapterCompRef", w.pick(kComponents), 20);
  w.attribute("adapteeCompRef", w.pick(kComponents), 20);
  w.attribute("adapterType", w.pick({"system_compiler_generated_adapter_v2", "other"}), 15);
  w.attribute("clockPeriod", w.pick(kNumbers), 20);
  for (char const* resource : {"LUT", "REG", "BRAM", "URAM", "DSP"}) {
    w.attribute(resource, w.pick(kNumbers), 15);
  }
  // An attribute of another namespace that shares a local name: the queries do not see it.
  if (w.chance(10)) w.raw(" other:name=\"" + std::string(platform ? "acc" : "plat") + "\"");
  // The name twice, under both prefixes of the namespace: libxml2 keeps both (a namespace error,
  // not a fatal one), unless both came out under the same prefix, which no parser accepts.
  if (w.chance(4)) w.attribute("name", w.pick(kComponents), 100);
  w.endOpen();
  w.raw("\n");
  if (platform || w.chance(5)) platformInfo(w);
  int const interfaces = w.upTo(platform ? 7 : 5);
  for (int i = 0; i < interfaces; ++i) busInterface(w, platform);
  if (w.chance(20)) {
    w.open("port");
    w.attribute("name", w.pick(kPorts));
    w.attribute("direction", w.pick({"in", "out"}));
    w.attribute("width", w.pick(kNumbers));
    w.endEmpty();
  }
  if (w.chance(50)) estimates(w);
  if (platform && w.chance(60)) {
    w.open("nocConnectivity");
    w.attribute("instanceRef", w.pick(kInstances));
    w.endOpen();
    int const connections = w.upTo(2);
    for (int c = 0; c < connections; ++c) {
      w.open("busInterface");
      w.attribute("name", w.pick(kPorts), 95);
      w.endOpen();
      addressSegments(w, w.upTo(2), w.pick(kTags));
      w.close("busInterface");
    }
    w.close("nocConnectivity");
  }
  w.close("component");
}

void argument(Writer& w, std::string const& root) {
  bool const master = w.chance(25);
  w.open("arg");
  w.attribute("name", w.pick(kArguments), 90);
  w.attribute("hwName", w.pick(kArguments) + "_hw", 60);
  w.attribute("swRootName", w.chance(70) ? root : w.pick(kRoots), 50);
  w.attribute("dataPack", w.pick({"true", "true", "false"}), 35);
  w.attribute("bitMapping", w.pick({"31:0", "63:32", "7:4", "x"}), 40);
  w.attribute("dataWidth", w.pick(kNumbers));
  w.attribute("dataPackWidth", w.pick(kNumbers), 40);
  w.attribute("direction", w.pick({"in", "out", "inout", "x"}));
  w.attribute("busInterfaceRef", w.pick(kPorts));
  w.attribute("portInterfaceType", w.pick({"register", "axis", "bram", "fifo", "aximm", "x"}));
  w.attribute("offset", w.pick(kOffsets), 60);
  w.attribute("index", w.pick(kNumbers), 60);
  w.attribute("id", w.pick(kNumbers), 60);
  w.attribute("arraySize", w.pick(kNumbers), 30);
  w.attribute("bufferDepth", w.pick(kNumbers), 30);
  w.attribute("multibufferDepth", w.pick(kNumbers), 30);
  w.attribute("hasTlast", w.pick(kTruths), 15);
  if (master) {
    w.attribute("aximmMasterRef", w.chance(80) ? "m_axi_gmem" : "", 95);
    w.attribute("aximmMasterDataWidth", w.pick(kNumbers));
    w.attribute("aximmMasterDirection", w.pick({"in", "out", "inout"}));
    w.attribute("aximmMasterArraySize", w.pick(kNumbers));
  }
  w.endEmpty();
}

void function(Writer& w) {
  w.open("fcnMap");
  w.attribute("fcnName", w.pick(kFunctions), 95);
  if (w.chance(4)) w.attribute("fcnName", w.pick(kFunctions), 100);
  w.attribute("componentRef", w.pick(kComponents), 90);
  w.attribute("type", w.pick({"hls", "hls", "hls_opencl", "hls_opencl_adapter", "hdl", "library",
                              "hls_adapter", "x"}));
  w.attribute("clockId", w.pick(kNumbers), 50);
  w.attribute("clockPeriod", w.pick(kNumbers), 40);
  w.attribute("flow", w.pick({"hls", "rtl", "x"}), 30);
  w.attribute("hostMachine", w.pick(kNumbers), 20);
  w.attribute("initiationInterval", w.pick(kNumbers), 30);
  for (char const* flag : {"isMFA", "isRTL", "isTemplate", "noExec", "sequential"}) {
    w.attribute(flag, w.pick(kTruths), 25);
  }
  w.attribute("templateInstantiation", w.pick({"f<int>", ""}), 15);
  w.endOpen();
  w.raw("\n");
  int const arguments = w.upTo(6);
  std::string const root = w.pick(kRoots);
  for (int a = 0; a < arguments; ++a) argument(w, root);
  if (w.chance(70)) {
    w.open("ctrlReg");
    w.attribute("type", w.pick({"ap_ctrl_hs", "ap_ctrl_none", "ap_ctrl_chain", "generic_axi_lite"}));
    w.attribute("name", "ctrl", 50);
    w.attribute("busInterfaceRef", w.pick(kPorts));
    w.attribute("offset", w.pick(kOffsets));
    w.attribute("bufferDepth", w.pick(kNumbers), 30);
    w.attribute("portInterfaceType", "register", 30);
    w.endEmpty();
  }
  if (w.chance(25)) {
    w.open("lengthRegisterOffset");
    w.attribute("busInterfaceRef", w.pick(kPorts));
    w.attribute("offset", w.pick(kOffsets));
    w.endEmpty();
  }
  if (w.chance(30)) {
    w.open("returnValue");
    w.attribute("hwName", "ap_return");
    w.attribute("busInterfaceRef", w.pick(kPorts));
    w.attribute("dataWidth", w.pick(kNumbers));
    w.attribute("offset", w.pick(kOffsets));
    w.endEmpty();
  }
  if (w.chance(25)) {
    w.open("interrupt");
    w.attribute("busInterfaceRef", w.pick(kPorts));
    w.endEmpty();
  }
  if (w.chance(20)) {
    w.open("derivedClock");
    w.attribute("derivedClockName", w.pick(kPorts));
    w.attribute("derivedClockPeriodMultiplier", w.pick(kNumbers));
    w.attribute("derivedClockPeriodDivisor", w.pick(kNumbers));
    w.endEmpty();
  }
  if (w.chance(25)) {
    w.open("latencyEstimates");
    w.attribute("worst-case", w.pick(kNumbers));
    w.attribute("average-case", w.pick(kNumbers));
    w.endEmpty();
  }
  if (w.chance(25)) estimates(w);
  int const pipes = w.chance(30) ? w.upTo(2) : 0;
  for (int p = 0; p < pipes; ++p) {
    w.openPlain("pipe");
    w.plainAttribute("name", w.pick({"p_ab", "p_ba"}));
    w.plainAttribute("width", w.pick({"32", "8x", "deep"}));
    w.plainAttribute("depth", w.pick({"16", "deep"}));
    w.plainAttribute("linkage", w.pick({"internal", "external", "x"}));
    w.endEmpty();
    w.openPlain("connection");
    w.plainAttribute("srcInst", w.pick(kFunctions));
    w.plainAttribute("srcPort", w.pick(kArguments));
    w.plainAttribute("srcType", w.pick({"kernel", "pipe", "accelerator"}));
    w.plainAttribute("dstInst", w.pick(kFunctions));
    w.plainAttribute("dstPort", w.pick({"p_ab", "p_ba", "a"}));
    w.plainAttribute("dstType", w.pick({"kernel", "pipe"}));
    w.endEmpty();
  }
  w.close("fcnMap");
}

}  // namespace

RandomRepositoryFile::RandomRepositoryFile(unsigned seed) {
  Writer w(seed);
  w.raw("<?xml version=\"1.0\"?>\n<!-- made from seed " + std::to_string(seed) + " -->\n");
  w.raw("<qd:repository xmlns:qd=\"urn:quarrix:qd\" xmlns:q2=\"urn:quarrix:qd\""
        " xmlns:other=\"urn:other\">\n");
  // Now and then no platform, or two of them.
  int const platforms = w.chance(10) ? 0 : (w.chance(15) ? 2 : 1);
  int const components = w.upTo(6);
  for (int c = 0; c < platforms + components; ++c) component(w, c < platforms);
  int const functions = w.upTo(6);
  for (int f = 0; f < functions; ++f) function(w);
  w.raw("</qd:repository>\n");
  text_ = w.text();
}

}  // namespace qvtest
