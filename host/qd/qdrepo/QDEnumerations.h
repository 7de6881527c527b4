// The twelve vocabularies of the hardware repository and their text forms.
//
// The words are attribute values of repository files (docs/formats.md). Each str2X looks a word
// up, case and every character counting, and answers a fixed default for a word it does not
// know. Its table is filled by the first QDSRepo of the process (initEnumerationMaps), so until
// then every str2X answers its default. X2str gives the word of a value; past the end of its
// table it throws std::out_of_range naming the function and the value.
//
// The tables keep the oddities that files in the field depend on: port_t jumps from 2 to 16,
// "acc_fifo_read" reads as fifo, the dashed cpu names read as their underscore forms,
// memport_t2str is no inverse of str2memport_t, noc_resource_t2str's words differ from
// str2noc_resource_t's, and an unknown channel reads as mm2mm.
#ifndef HOST_QD_QDREPO_QDENUMERATIONS_H_
#define HOST_QD_QDREPO_QDENUMERATIONS_H_

#include <string>

#include "service/Export.h"

namespace qd {

enum comp_t {
  COMP_GENERIC = 0,
  COMP_ACCELERATOR = 1,
  COMP_DATAMOVER = 2,
  COMP_INTERCONNECT = 3,
  COMP_MEMORY = 4,
  COMP_PLATFORM = 5,
  COMP_PROCESSING_SYSTEM = 6,
  COMP_MONITOR = 7,
  COMP_ADAPTER = 8,
  COMP_SMARTCONNECT = 9,
  COMP_KERNEL = 10,
  COMP_PIPE = 11,
};

enum port_t {
  PORT_UNKNOWN = 0,
  PORT_STREAM = 1,
  PORT_ADDRESSABLE = 2,
  PORT_AXIMM = 16,
  PORT_AXIS = 17,
  PORT_AXILITE = 18,
  PORT_ACC_HANDSHAKE = 19,
  PORT_BRAM = 20,
  PORT_FIFO = 21,
  PORT_REGISTER = 22,
  PORT_CLOCK = 23,
  PORT_RESET = 24,
  PORT_INTERRUPT = 25,
  PORT_PORT = 26,
  PORT_MVKSOC_TRACE = 27,
  PORT_MEMOBJECT = 28,
};

enum datamover_t {
  DATAMOVER_UNSPECIFIED = 0,
  DATAMOVER_AXI_LITE = 1,
  DATAMOVER_AXI_DMA_SG = 2,
  DATAMOVER_AXI_DMA_SIMPLE = 3,
  DATAMOVER_AXI_DMA_2D = 4,
  DATAMOVER_AXI_FIFO = 5,
  DATAMOVER_ZERO_COPY = 6,
  DATAMOVER_MEM_STREAM = 7,
  DATAMOVER_FAST_DMA = 8,
};

enum channel_t {
  CHANNEL_UNSUPPORTED = 0,
  CHANNEL_MM2S = 1,
  CHANNEL_S2MM = 2,
  CHANNEL_S2S = 3,
  CHANNEL_MM2MM = 4,
};

enum cpu_t {
  CPU_CORTEX_A9 = 0,
  CPU_CORTEX_A53 = 1,
  CPU_CORTEX_A72 = 2,
  CPU_CORTEX_R5 = 3,
  CPU_SOFTCORIX = 4,
  CPU_X86 = 5,
  CPU_POWER8 = 6,
};

enum device_t {
  DEVICE_TARSK = 0,
  DEVICE_TARSK_ULTRA = 1,
};

enum mode_t {
  MODE_MASTER = 0,
  MODE_SLAVE = 1,
  MODE_NO_MODE = 2,
};

enum dir_t {
  DIR_IN = 0,
  DIR_OUT = 1,
  DIR_INOUT = 2,
  DIR_NO_DIR = 3,
};

enum monitor_t {
  MONITOR_NO_MONITOR = 0,
  MONITOR_APM = 1,
  MONITOR_ILA = 2,
  MONITOR_TRACE = 3,
};

// The values str2memport_t gives; memport_t2str indexes its own table of twelve words.
enum memport_t {
  MEMPORT_NONE = 0,
  MEMPORT_NOC_MASTER = 1,
  MEMPORT_M_AXI_DMA = 2,
  MEMPORT_M_AXI_GP = 3,
  MEMPORT_S_AXI_ACP = 4,
  MEMPORT_S_AXI_GP = 5,
  MEMPORT_S_AXI_HP = 6,
  MEMPORT_S_AXI_HPC = 7,
  MEMPORT_NOC_SLAVE = 8,
  MEMPORT_MIG = 9,
};

enum linkage_t {
  LINKAGE_NO_LINKAGE = 0,
  LINKAGE_INTERNAL = 1,
  LINKAGE_EXTERNAL = 2,
};

enum noc_resource_t {
  NOC_RESOURCE_NONE = 0,
  NOC_RESOURCE_PL_NMU = 1,
  NOC_RESOURCE_PL_NSU = 2,
  NOC_RESOURCE_HBM_NMU = 3,
};

QV_EXPORT comp_t str2comp_t(std::string word);
QV_EXPORT port_t str2port_t(std::string word);
QV_EXPORT datamover_t str2datamover_t(std::string word);
QV_EXPORT channel_t str2channel_t(std::string word);
QV_EXPORT cpu_t str2cpu_t(std::string word);
QV_EXPORT device_t str2device_t(std::string word);
QV_EXPORT mode_t str2mode_t(std::string word);
QV_EXPORT dir_t str2dir_t(std::string word);
QV_EXPORT monitor_t str2monitor_t(std::string word);
QV_EXPORT memport_t str2memport_t(std::string word);
QV_EXPORT linkage_t str2linkage_t(std::string word);
QV_EXPORT noc_resource_t str2noc_resource_t(std::string word);

QV_EXPORT std::string comp_t2str(comp_t value);
QV_EXPORT std::string port_t2str(port_t value);
QV_EXPORT std::string datamover_t2str(datamover_t value);
QV_EXPORT std::string channel_t2str(channel_t value);
QV_EXPORT std::string cpu_t2str(cpu_t value);
QV_EXPORT std::string mode_t2str(mode_t value);
QV_EXPORT std::string dir_t2str(dir_t value);
QV_EXPORT std::string monitor_t2str(monitor_t value);
QV_EXPORT std::string memport_t2str(memport_t value);
QV_EXPORT std::string linkage_t2str(linkage_t value);
QV_EXPORT std::string noc_resource_t2str(noc_resource_t value);

// Fills the str2X tables, once per process: a call after the first finds the word "unknown"
// in the port table and changes nothing. Called by QDSRepo's constructor; not guarded, so the
// first repository must be made before other threads convert words.
void initEnumerationMaps();

}  // namespace qd

#endif  // HOST_QD_QDREPO_QDENUMERATIONS_H_
