// The number of the program's icon, for the resources and for who loads it.
#define LEVELVIEW_ICON 1
