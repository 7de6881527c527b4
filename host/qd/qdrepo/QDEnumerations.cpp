#include "host/qd/qdrepo/QDEnumerations.h"

#include <iterator>
#include <map>
#include <stdexcept>

namespace qd {

// The words by value: fixed at load. Two separately written tables per vocabulary, this one and
// the map below; where they disagree, both stand as files and callers in the field know them.
// clang-format off: one table a vocabulary, as the words stand in the files.
std::string const _comp_t2str[] = {
    "generic",           "accelerator", "datamover", "interconnect", "memory", "platform",
    "processing_system", "monitor",     "adapter",   "smartconnect", "kernel", "pipe"};
// Values 3 to 15 name no port kind.
std::string const _port_t2str[] = {"unknown",
                                   "stream",
                                   "addressable",
                                   "",
                                   "",
                                   "",
                                   "",
                                   "",
                                   "",
                                   "",
                                   "",
                                   "",
                                   "",
                                   "",
                                   "",
                                   "",
                                   "aximm",
                                   "axis",
                                   "axilite",
                                   "acc_handshake",
                                   "bram",
                                   "fifo",
                                   "register",
                                   "clock",
                                   "reset",
                                   "interrupt",
                                   "port",
                                   "mvksoc_trace",
                                   "memobject"};
std::string const _datamover_t2str[] = {"unspecified",    "axi_lite",   "axi_dma_sg",
                                        "axi_dma_simple", "axi_dma_2d", "axi_fifo",
                                        "zero_copy",      "mem_stream", "fast_dma"};
std::string const _channel_t2str[] = {"unsupported", "mm2s", "s2mm", "s2s", "mm2mm"};
std::string const _cpu_t2str[] = {"cortex_a9", "cortex_a53", "cortex_a72", "cortex_r5",
                                  "softcorix", "x86",        "power8"};
std::string const _mode_t2str[] = {"master", "slave", "no_mode"};
std::string const _dir_t2str[] = {"in", "out", "inout", "no_dir"};
std::string const _monitor_t2str[] = {"no_monitor", "apm", "ila", "trace"};
std::string const _memport_t2str[] = {"MEMPORT_NONE", "NOC_MASTER", "M_AXI_NOC", "M_AXI_DMA",
                                      "M_AXI_GP",     "S_AXI_ACP",  "S_AXI_GP",  "S_AXI_HP",
                                      "S_AXI_HPC",    "NOC_SLAVE",  "S_AXI_NOC", "MIG"};
std::string const _linkage_t2str[] = {"no_linkage", "internal", "external"};
// The first entry runs two words together, and "hbm_nsu" is no key of the map; kept as written.
std::string const _noc_resource_t2str[] = {"no_noc_resourcepl_nsu", "pl_nmu", "hbm_nsu"};
// clang-format on

// Words to values: empty until the first repository fills them.
std::map<std::string, comp_t> _str2comp_t;
std::map<std::string, port_t> _str2port_t;
std::map<std::string, datamover_t> _str2datamover_t;
std::map<std::string, channel_t> _str2channel_t;
std::map<std::string, cpu_t> _str2cpu_t;
std::map<std::string, device_t> _str2device_t;
std::map<std::string, mode_t> _str2mode_t;
std::map<std::string, dir_t> _str2dir_t;
std::map<std::string, monitor_t> _str2monitor_t;
std::map<std::string, memport_t> _str2memport_t;
std::map<std::string, linkage_t> _str2linkage_t;
std::map<std::string, noc_resource_t> _str2noc_resource_t;

namespace {

template <class Enum>
Enum lookUp(std::map<std::string, Enum> const& table, std::string const& word, Enum fallback) {
  auto const found = table.find(word);
  return found == table.end() ? fallback : found->second;
}

template <class Enum, std::size_t N>
std::string wordOf(std::string const (&table)[N], Enum value, char const* function) {
  auto const index = static_cast<long long>(static_cast<int>(value));
  if (index < 0 || index >= static_cast<long long>(N)) {
    throw std::out_of_range(std::string("qd::") + function + ": " + std::to_string(index) +
                            " has no word (the table has " + std::to_string(N) + ")");
  }
  return table[index];
}

}  // namespace

void initEnumerationMaps() {
  if (_str2port_t.count("unknown") != 0) return;

  for (std::size_t i = 0; i < std::size(_comp_t2str); ++i) {
    _str2comp_t[_comp_t2str[i]] = static_cast<comp_t>(i);
  }
  _str2port_t = {{"unknown", PORT_UNKNOWN},
                 {"stream", PORT_STREAM},
                 {"addressable", PORT_ADDRESSABLE},
                 {"aximm", PORT_AXIMM},
                 {"axis", PORT_AXIS},
                 {"axilite", PORT_AXILITE},
                 {"acc_handshake", PORT_ACC_HANDSHAKE},
                 {"bram", PORT_BRAM},
                 {"fifo", PORT_FIFO},
                 {"acc_fifo_read", PORT_FIFO},
                 {"acc_fifo_write", PORT_FIFO},
                 {"register", PORT_REGISTER},
                 {"clock", PORT_CLOCK},
                 {"reset", PORT_RESET},
                 {"interrupt", PORT_INTERRUPT},
                 {"port", PORT_PORT},
                 {"mvksoc_trace", PORT_MVKSOC_TRACE},
                 {"memobject", PORT_MEMOBJECT}};
  for (std::size_t i = 0; i < std::size(_datamover_t2str); ++i) {
    _str2datamover_t[_datamover_t2str[i]] = static_cast<datamover_t>(i);
  }
  for (std::size_t i = 0; i < std::size(_channel_t2str); ++i) {
    _str2channel_t[_channel_t2str[i]] = static_cast<channel_t>(i);
  }
  _str2cpu_t = {{"cortex_a9", CPU_CORTEX_A9},   {"cortex-a9", CPU_CORTEX_A9},
                {"cortex_a53", CPU_CORTEX_A53}, {"cortex-a53", CPU_CORTEX_A53},
                {"cortex_a72", CPU_CORTEX_A72}, {"cortex-a72", CPU_CORTEX_A72},
                {"cortex_r5", CPU_CORTEX_R5},   {"cortex-r5", CPU_CORTEX_R5},
                {"softcorix", CPU_SOFTCORIX},   {"x86", CPU_X86},
                {"power8", CPU_POWER8}};
  _str2device_t = {{"tarsk", DEVICE_TARSK}, {"tarsk_ultra", DEVICE_TARSK_ULTRA}};
  for (std::size_t i = 0; i < std::size(_mode_t2str); ++i) {
    _str2mode_t[_mode_t2str[i]] = static_cast<mode_t>(i);
  }
  for (std::size_t i = 0; i < std::size(_dir_t2str); ++i) {
    _str2dir_t[_dir_t2str[i]] = static_cast<dir_t>(i);
  }
  for (std::size_t i = 0; i < std::size(_monitor_t2str); ++i) {
    _str2monitor_t[_monitor_t2str[i]] = static_cast<monitor_t>(i);
  }
  // Keyed by the array's words, but two pairs of words fold into one value each, so from
  // index 2 on the value is not the array index.
  memport_t const memportValues[] = {MEMPORT_NONE,      MEMPORT_NOC_MASTER, MEMPORT_NOC_MASTER,
                                     MEMPORT_M_AXI_DMA, MEMPORT_M_AXI_GP,   MEMPORT_S_AXI_ACP,
                                     MEMPORT_S_AXI_GP,  MEMPORT_S_AXI_HP,   MEMPORT_S_AXI_HPC,
                                     MEMPORT_NOC_SLAVE, MEMPORT_NOC_SLAVE,  MEMPORT_MIG};
  static_assert(std::size(memportValues) == std::size(_memport_t2str), "one value per word");
  for (std::size_t i = 0; i < std::size(_memport_t2str); ++i) {
    _str2memport_t[_memport_t2str[i]] = memportValues[i];
  }
  for (std::size_t i = 0; i < std::size(_linkage_t2str); ++i) {
    _str2linkage_t[_linkage_t2str[i]] = static_cast<linkage_t>(i);
  }
  _str2noc_resource_t = {{"no_noc_resource", NOC_RESOURCE_NONE},
                         {"pl_nmu", NOC_RESOURCE_PL_NMU},
                         {"pl_nsu", NOC_RESOURCE_PL_NSU},
                         {"hbm_nmu", NOC_RESOURCE_HBM_NMU}};
}

comp_t str2comp_t(std::string word) { return lookUp(_str2comp_t, word, COMP_GENERIC); }
port_t str2port_t(std::string word) { return lookUp(_str2port_t, word, PORT_UNKNOWN); }
datamover_t str2datamover_t(std::string word) {
  return lookUp(_str2datamover_t, word, DATAMOVER_UNSPECIFIED);
}
// An unknown channel word reads as mm2mm, not as unsupported: callers have always relied on it.
channel_t str2channel_t(std::string word) { return lookUp(_str2channel_t, word, CHANNEL_MM2MM); }
cpu_t str2cpu_t(std::string word) { return lookUp(_str2cpu_t, word, CPU_CORTEX_A9); }
device_t str2device_t(std::string word) { return lookUp(_str2device_t, word, DEVICE_TARSK); }
mode_t str2mode_t(std::string word) { return lookUp(_str2mode_t, word, MODE_NO_MODE); }
dir_t str2dir_t(std::string word) { return lookUp(_str2dir_t, word, DIR_NO_DIR); }
monitor_t str2monitor_t(std::string word) {
  return lookUp(_str2monitor_t, word, MONITOR_NO_MONITOR);
}
memport_t str2memport_t(std::string word) { return lookUp(_str2memport_t, word, MEMPORT_NONE); }
linkage_t str2linkage_t(std::string word) {
  return lookUp(_str2linkage_t, word, LINKAGE_NO_LINKAGE);
}
noc_resource_t str2noc_resource_t(std::string word) {
  return lookUp(_str2noc_resource_t, word, NOC_RESOURCE_NONE);
}

std::string comp_t2str(comp_t value) { return wordOf(_comp_t2str, value, "comp_t2str"); }
std::string port_t2str(port_t value) { return wordOf(_port_t2str, value, "port_t2str"); }
std::string datamover_t2str(datamover_t value) {
  return wordOf(_datamover_t2str, value, "datamover_t2str");
}
std::string channel_t2str(channel_t value) {
  return wordOf(_channel_t2str, value, "channel_t2str");
}
std::string cpu_t2str(cpu_t value) { return wordOf(_cpu_t2str, value, "cpu_t2str"); }
std::string mode_t2str(mode_t value) { return wordOf(_mode_t2str, value, "mode_t2str"); }
std::string dir_t2str(dir_t value) { return wordOf(_dir_t2str, value, "dir_t2str"); }
std::string monitor_t2str(monitor_t value) {
  return wordOf(_monitor_t2str, value, "monitor_t2str");
}
std::string memport_t2str(memport_t value) {
  return wordOf(_memport_t2str, value, "memport_t2str");
}
std::string linkage_t2str(linkage_t value) {
  return wordOf(_linkage_t2str, value, "linkage_t2str");
}
std::string noc_resource_t2str(noc_resource_t value) {
  return wordOf(_noc_resource_t2str, value, "noc_resource_t2str");
}

}  // namespace qd
