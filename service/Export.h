// Marks what libqv_system_diagram.so exports; everything else is hidden.
#ifndef SERVICE_EXPORT_H_
#define SERVICE_EXPORT_H_

#define QV_EXPORT __attribute__((visibility("default")))

#endif  // SERVICE_EXPORT_H_
