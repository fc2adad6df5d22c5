#include "keeper/library/MusicDictionary.h"

namespace {

/// All but the language's own "item" and "application", which they descend from.
const ScriptClass kClasses[] = {
    {u"source"_qs, u"sources"_qs, u"item"_qs},
    {u"playlist"_qs, u"playlists"_qs, u"item"_qs},
    {u"library playlist"_qs, u"library playlists"_qs, u"playlist"_qs},
    {u"user playlist"_qs, u"user playlists"_qs, u"playlist"_qs},
    {u"folder playlist"_qs, u"folder playlists"_qs, u"user playlist"_qs},
    {u"subscription playlist"_qs, u"subscription playlists"_qs, u"playlist"_qs},
    {u"radio tuner playlist"_qs, u"radio tuner playlists"_qs, u"playlist"_qs},
    {u"audio cd playlist"_qs, u"audio cd playlists"_qs, u"playlist"_qs},
    {u"device playlist"_qs, u"device playlists"_qs, u"playlist"_qs},
    {u"track"_qs, u"tracks"_qs, u"item"_qs},
    {u"file track"_qs, u"file tracks"_qs, u"track"_qs},
    {u"url track"_qs, u"url tracks"_qs, u"track"_qs},
    {u"shared track"_qs, u"shared tracks"_qs, u"track"_qs},
    {u"audio cd track"_qs, u"audio cd tracks"_qs, u"track"_qs},
    {u"device track"_qs, u"device tracks"_qs, u"track"_qs},
    {u"artwork"_qs, u"artworks"_qs, u"item"_qs},
};

/// In rows, parted by commas: a line for each would hide the whole.
constexpr QStringView kProperties =
    u"class,container,id,index,name,persistent id,properties,"
    // The application.
    u"version,player state,current track,current playlist,current stream title,current stream url,selection,"
    u"player position,sound volume,mute,frontmost,fixed indexing,converting,shuffle enabled,shuffle mode,"
    u"song repeat,full screen,visuals enabled,eq enabled,"
    // Sources and playlists.
    u"kind,capacity,free space,description,duration,size,time,parent,visible,favorited,disliked,special kind,"
    u"smart,genius,shared,shuffle,"
    // Tracks.
    u"artist,album artist,album,composer,genre,grouping,comment,lyrics,long "
    u"description,category,show,eq,year,"
    u"bpm,track number,track count,disc number,disc "
    u"count,compilation,enabled,gapless,shufflable,bookmarkable,"
    u"unplayed,sort name,sort artist,sort album artist,sort album,sort composer,sort show,work,movement,"
    u"movement number,movement count,volume adjustment,media kind,video kind,podcast,played count,played "
    u"date,"
    u"skipped count,skipped date,rating,album rating,rating kind,album rating kind,album favorited,"
    u"album disliked,date added,modification date,release date,start,finish,bookmark,bit rate,sample rate,"
    u"database id,cloud status,purchaser name,purchaser apple id,downloader name,downloader apple id,"
    u"episode id,episode number,season number,location,address,"
    // Artworks.
    u"data,raw data,format,downloaded";

constexpr QStringView kConstants =
    u"stopped,playing,paused,fast forwarding,rewinding,"
    u"library,audio cd,mp3 cd,device,radio tuner,shared library,itunes store,unknown,"
    u"none,folder,music,movies,tv shows,podcasts,audiobooks,books,itunes u,purchased music,party shuffle,"
    u"off,one,all,songs,groupings,user,computed,artists,albums,composers,names,displayed,"
    u"song,music video,movie,tv show,audiobook,alert tone,voice memo,home video,book,"
    u"purchased,matched,uploaded,ineligible,removed,subscription,prerelease,"
    u"no longer available,not uploaded";

const ScriptVerb kVerbs[] = {
    {u"add"_qs, {u"to"_qs}},
    {u"delete"_qs, {}},
    {u"duplicate"_qs, {u"to"_qs}},
    {u"move"_qs, {u"to"_qs}},
    {u"make"_qs, {u"new"_qs, u"at"_qs, u"with properties"_qs, u"with data"_qs}},
    {u"refresh"_qs, {}},
    {u"play"_qs, {u"once"_qs}},
    {u"pause"_qs, {}},
    {u"playpause"_qs, {}},
    {u"stop"_qs, {}},
    {u"resume"_qs, {}},
    {u"next track"_qs, {}},
    {u"previous track"_qs, {}},
    {u"back track"_qs, {}},
    {u"fast forward"_qs, {}},
    {u"rewind"_qs, {}},
    {u"reveal"_qs, {}},
    {u"select"_qs, {}},
    {u"convert"_qs, {}},
    {u"search"_qs, {u"for"_qs, u"only"_qs}},
    {u"save"_qs, {u"in"_qs, u"as"_qs}},
    {u"open"_qs, {}},
    {u"close"_qs, {u"saving"_qs, u"saving in"_qs}},
    {u"print"_qs, {}},
    {u"export"_qs, {u"as"_qs, u"to"_qs}},
    {u"launch"_qs, {}},
    {u"activate"_qs, {}},
    {u"run"_qs, {}},
    {u"quit"_qs, {}},
};

ScriptDictionary filled() {
  ScriptDictionary made;
  for (const ScriptClass &scriptClass : kClasses) made.addClass(scriptClass);
  for (const QStringView term : kProperties.split(u',')) made.addProperty(term.toString());
  made.addSynonym(u"loved"_qs, u"favorited"_qs);
  made.addSynonym(u"album loved"_qs, u"album favorited"_qs);
  for (const QStringView term : kConstants.split(u',')) made.addConstant(term.toString());
  for (const ScriptVerb &verb : kVerbs) made.addVerb(verb);
  return made;
}

}  // namespace

const ScriptDictionary &musicDictionary() {
  static const ScriptDictionary dictionary = filled();
  return dictionary;
}
