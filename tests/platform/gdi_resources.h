// Numbers of the resources that the tests load.
#define GDI_ICON 0x67 // 103
#define GDI_CURSOR 104
