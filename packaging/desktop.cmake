# The entry in a desktop's menu. The files below share/ have the layout of an XDG data folder, and
# install-desktop-entry copies them to the user's own.
set(id example.kovant.quirel)
install(PROGRAMS install-desktop-entry DESTINATION .)
install(FILES ${id}.desktop DESTINATION share/applications)
install(FILES ${id}.metainfo.xml DESTINATION share/metainfo)

set(icons ${PROJECT_SOURCE_DIR}/app/icons)
set(theme share/icons/hicolor)
foreach(size 16 24 32 48 64 128 256)
    install(FILES ${icons}/quirel-${size}.png DESTINATION ${theme}/${size}x${size}/apps RENAME ${id}.png)
endforeach()
install(FILES ${icons}/quirel.svg DESTINATION ${theme}/scalable/apps RENAME ${id}.svg)
