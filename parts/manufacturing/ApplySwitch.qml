import zvt.rows

// A row with a switch of a section whose settings are applied all together.
ToggleRow {
    required property ApplyBody section

    enabled: !section.refreshing
    onToggled: section.unapplied = true
}
