-- The host's own presets of the plug-in: stores the current values, changes them, loads them again.
-- Arguments: FOLDER TRACK
dofile(debug.getinfo(1, "S").source:match("^@(.*/)") .. "common.lua")

local folder, track = arg[1], arg[2]
AudioEngine:set_backend("None (Dummy)", "Unit-Test", "")
local session = load_session(folder, folder:match("[^/]+$"))
assert(session, "no session")
local insert, processor = insert_of(session, track)
local plugin = insert:plugin(0)

local function values()
    local list = {}
    for _, parameter in ipairs(parameters(insert)) do
        list[#list + 1] = (ARDOUR.LuaAPI.get_processor_param(processor, parameter.index))
    end
    return list
end

local function differing(a, b)
    local count = 0
    for index, value in ipairs(a) do
        if value ~= b[index] then
            count = count + 1
        end
    end
    return count
end

local before = values()
local record = plugin:save_preset("Kept")
assert(record.valid, "the preset was not stored")
for _, parameter in ipairs(parameters(insert)) do
    local value = before[parameter.index + 1]
    ARDOUR.LuaAPI.set_processor_param(processor, parameter.index, value < 0.5 and 1 or 0)
end
sleep(0.5)
report("changed", differing(before, values()))
assert(plugin:load_preset(record), "the preset was not loaded")
sleep(0.5)
report("still-changed", differing(before, values()))
report("done")
