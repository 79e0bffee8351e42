import com.kestrin.hlxcamui.templates 6.4 as T

// A file or folder dialog of the desktop; see platform/hlxcamui/WidgetFileDialog.h.
T.WidgetFileDialog { }
