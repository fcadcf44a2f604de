// The least window with GTK 4: a label and a button. gtk_window WIDTH HEIGHT
#include <gtk/gtk.h>

#include <cstdlib>

namespace {

struct Size {
    int width;
    int height;
};

void Open(GtkApplication* application, gpointer data) {
    const auto* const size = static_cast<const Size*>(data);
    GtkWidget* const window = gtk_application_window_new(application);
    gtk_window_set_title(GTK_WINDOW(window), "GTK 4");
    gtk_window_set_default_size(GTK_WINDOW(window), size->width, size->height);
    GtkWidget* const box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 12);
    gtk_box_append(GTK_BOX(box), gtk_label_new("A label"));
    gtk_box_append(GTK_BOX(box), gtk_button_new_with_label("A button"));
    gtk_window_set_child(GTK_WINDOW(window), box);
    gtk_window_present(GTK_WINDOW(window));
}

}  // namespace

int main(int count, char** words) {
    if (count != 3) return 2;
    Size size{std::atoi(words[1]), std::atoi(words[2])};
    // No name: nothing is looked for on the session bus.
    GtkApplication* const application = gtk_application_new(nullptr, G_APPLICATION_NON_UNIQUE);
    g_signal_connect(application, "activate", G_CALLBACK(Open), &size);
    return g_application_run(G_APPLICATION(application), 0, nullptr);
}
