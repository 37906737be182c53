#define LABEL_TEXT "v"
